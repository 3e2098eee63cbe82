// brisel-preview: see a scene while you turn its values.
#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <exception>

#include "cli/scene/effect.h"
#include "cli/support/memory.h"
#include "desk/window/main_window.h"
#include "desk/window/theme.h"

namespace {

int run(const QApplication& app) {
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
  parser.process(app);
  if (parser.positionalArguments().size() > 1) {
    std::fputs("brisel-preview: takes one scene (brisel-preview --help tells more)\n", stderr);
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
  const QApplication app(argc, argv);
  QApplication::setApplicationName("brisel-preview");
  QApplication::setApplicationDisplayName("Brisel");
  QApplication::setOrganizationName("brisel");
  QApplication::setApplicationVersion(BRISEL_VERSION);
  QApplication::setDesktopFileName("brisel-preview");
  try {
    return run(app);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "brisel-preview: %s\n", error.what());
    return 1;
  }
}
