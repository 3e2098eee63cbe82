#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

namespace {

/// So that no test sees what another has left.
class FreshSettings : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo& /*test*/) override { QSettings().clear(); }
};

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Neither the person's settings and unsaved scenes, nor those of tests at the same time.
  const QTemporaryDir home;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
    qputenv(folder, home.path().toUtf8());
  }
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication app(argc, argv);
  QApplication::setApplicationName("brisel-preview-test");
  ::testing::UnitTest::GetInstance()->listeners().Append(new FreshSettings);
  return RUN_ALL_TESTS();
}
