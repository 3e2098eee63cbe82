// brisel-preview: see a scene while you turn its values.
#include <QApplication>
#include <QCommandLineParser>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string_view>

#include "cli/scene/effect.h"
#include "cli/support/memory.h"
#include "desk/window/main_window.h"
#include "desk/window/theme.h"

namespace {

void fail(const QString& sentence) {
  std::fprintf(stderr, "brisel-preview: %s\n", qUtf8Printable(sentence));
}

/// Where there is no screen, Qt says so in several lines and ends the program by a signal.
void tellStart(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  static QString first;  // which names the reason
  if (type != QtFatalMsg) {
    if (first.isEmpty()) first = message.simplified();
    return;
  }
  fail("there is no screen for a window: " + (first.isEmpty() ? message : first));
  std::_Exit(1);
}

/// Whether help or the version is all that is wanted, which needs no screen.
bool wantsWords(int argc, char** argv) {
  return std::any_of(argv + std::min(argc, 1), argv + argc, [](std::string_view word) {
    return word == "-h" || word == "-v" || word == "--version" || word.starts_with("--help");
  });
}

std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
  if (wantsWords(argc, argv)) return std::make_unique<QCoreApplication>(argc, argv);
  qInstallMessageHandler(tellStart);
  auto app = std::make_unique<QApplication>(argc, argv);
  qInstallMessageHandler(nullptr);
  return app;
}

int run() {
  QCommandLineParser parser;
  parser.setApplicationDescription("See a scene while you turn its values.");
  parser.addPositionalArgument("SCENE", "The scene, a TOML file; a new one without it.", "[SCENE]");
  const QCommandLineOption input({"i", "input"}, "Show the stars over a still or clip.", "INPUT");
  parser.addOption(input);
  const QCommandLineOption allow(
      "allow", "Let the scene name files below this folder, too; may be repeated.", "FOLDER");
  parser.addOption(allow);
  parser.addHelpOption();
  parser.addVersionOption();
  const bool isSound = parser.parse(QCoreApplication::arguments());
  if (isSound) parser.process(QCoreApplication::arguments());  // help and the version end it
  if (!isSound || parser.positionalArguments().size() > 1) {
    fail((isSound ? "it takes one scene" : parser.errorText().chopped(1)) +
         " (brisel-preview --help tells more)");
    return 2;
  }

  desk::restoreTheme();
  desk::MainWindow window(cli::presetsBeside(cli::findModule({})));
  if (parser.isSet(input)) window.document().setInput(parser.value(input));
  const QStringList scenes = parser.positionalArguments();
  if (!scenes.isEmpty()) window.open(scenes.front());
  for (const QString& folder : parser.values(allow)) window.document().allow(folder);
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  cli::keepFreedMemory();
  const auto app = makeApplication(argc, argv);
  QCoreApplication::setApplicationName("brisel-preview");
  QCoreApplication::setOrganizationName("brisel");
  QCoreApplication::setApplicationVersion(BRISEL_VERSION);
  QGuiApplication::setApplicationDisplayName("Brisel");
  QGuiApplication::setDesktopFileName("brisel-preview");
  try {
    return run();
  } catch (const std::exception& error) {
    fail(QString::fromUtf8(error.what()));
    return 1;
  }
}
