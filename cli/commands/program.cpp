#include "cli/commands/commands.h"

namespace cli {

void describeProgram(CLI::App& app, std::function<std::string()> version) {
  app.name("brisel");
  app.description("Star particles for titles and footage, rendered through the effect module.");
  app.set_version_flag("--version", std::move(version), "Tell version, commit and instruction set");
  app.set_help_flag("-h,--help", "Tell how it is used");
  app.require_subcommand(1);
  app.footer("Exit codes: 0 done, 1 the work failed, 2 wrong usage, 130 interrupted.");
  app.get_formatter()->column_width(26);
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.get_formatter()->label("Positionals", "Arguments");
  addRenderCommand(app);
  addPreviewCommand(app);
  addCheckpointCommand(app);
  addChunksCommand(app);
  addJoinCommand(app);
  addFarmCommand(app);
  addSheetCommand(app);
  addPanelCommand(app);
  addNewCommand(app);
  addParamsCommand(app);
  addPresetsCommand(app);
  addInfoCommand(app);
  for (CLI::App* command : app.get_subcommands({})) command->group("Commands");
}

}  // namespace cli
