#include <cstdio>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands/commands.h"
#include "cli/scene/effect.h"
#include "cli/scene/preset_index.h"
#include "cli/support/text_table.h"

namespace cli {
namespace {

struct PresetsOptions {
  bool json = false;
  std::string module;
};

void printJson(const PresetIndex& index) {
  auto list = nlohmann::ordered_json::array();
  for (const Preset& preset : index.presets) {
    list.push_back({{"row", kPresetRows[preset.row].control},
                    {"name", preset.name},
                    {"file", preset.file.string()},
                    {"thumbnail", preset.thumbnail.string()}});
  }
  // File names are bytes; JSON is text.
  std::cout << list.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void printTable(const PresetIndex& index) {
  if (index.presets.empty()) {
    std::printf("There are no presets: %s does not exist or lists none.\n", index.file.c_str());
    return;
  }
  std::vector<TableRow> rows = {{"Row", "Name", "File", "Thumbnail"}};
  for (const Preset& preset : index.presets) {
    rows.push_back({kPresetRows[preset.row].control, preset.name, preset.file.filename().string(),
                    preset.thumbnail.filename().string()});
  }
  std::cout << index.file.parent_path().string() << "\n\n" << alignedTable(rows);
}

void listPresets(const PresetsOptions& options) {
  const Effect effect(options.module);
  const PresetIndex index = readPresetIndex(effect.path());
  if (options.json) {
    printJson(index);
  } else {
    printTable(index);
  }
}

}  // namespace

void addPresetsCommand(CLI::App& app) {
  const auto options = std::make_shared<PresetsOptions>();
  CLI::App* command = app.add_subcommand("presets", "List the presets beside the module");
  command->add_flag("--json", options->json, "As JSON, for scripts");
  addModuleOption(*command, options->module);
  command->callback([options] { listPresets(*options); });
}

}  // namespace cli
