#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication app(argc, argv);
  QApplication::setApplicationName("brisel-preview-test");
  return RUN_ALL_TESTS();
}
