#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands/commands.h"
#include "cli/scene/effect.h"
#include "cli/support/errors.h"
#include "cli/support/text_table.h"
#include "scene/preset_library.h"
#include "scene/text/nearest_name.h"
#include "scene/text/printable.h"

namespace cli {
namespace {

struct PresetsOptions {
  std::vector<std::string> words;
  bool json = false;
  bool names = false;
  std::string module;
};

struct Described {
  scene::Preset preset;
  std::string description;
};

// The presets whose name or description holds each of the words, capitals not counted.
std::vector<Described> presetsMeant(const scene::PresetLibrary& library,
                                    const std::vector<std::string>& words) {
  std::vector<Described> meant;
  for (const scene::Preset& preset : library.presets()) {
    const std::string description = library.describe(preset);
    const std::string text = scene::lowerCase(preset.name + '\n' + description);
    const auto isHeld = [&](const std::string& word) {
      return text.find(scene::lowerCase(word)) != std::string::npos;
    };
    if (std::ranges::all_of(words, isHeld)) meant.push_back({preset, description});
  }
  return meant;
}

void printJson(const std::vector<Described>& presets) {
  auto list = nlohmann::ordered_json::array();
  for (const auto& [preset, description] : presets) {
    list.push_back({{"row", scene::kPresetRows[preset.row].control},
                    {"name", preset.name},
                    {"description", description},
                    {"file", preset.file.string()},
                    {"thumbnail", preset.thumbnail.string()}});
  }
  // File names are bytes; JSON is text.
  std::cout << list.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void printForPeople(const std::vector<Described>& presets) {
  int widest = 0;
  for (const Described& described : presets) {
    widest = std::max(widest, columnsOf(scene::printable(described.preset.name)));
  }
  const int indent = 2 + widest + 2;
  const char* row = nullptr;
  for (const auto& [preset, description] : presets) {
    if (row != scene::kPresetRows[preset.row].control) {
      std::cout << (row == nullptr ? "" : "\n") << scene::kPresetRows[preset.row].control << '\n';
      row = scene::kPresetRows[preset.row].control;
    }
    const std::string name = scene::printable(preset.name);
    const int gap = description.empty() ? 0 : indent - 2 - columnsOf(name);
    std::cout << "  " << name << std::string(static_cast<std::size_t>(gap), ' ')
              << wrapped(scene::printable(description), indent, textWidth());
  }
}

void listPresets(const PresetsOptions& options) {
  const Effect effect(loadModule(options.module));
  const scene::PresetLibrary library = presetsBeside(effect.path());
  const std::vector<Described> meant = presetsMeant(library, options.words);
  if (options.json) return printJson(meant);
  if (options.names) {
    for (const Described& described : meant)
      std::cout << scene::printable(described.preset.name) << '\n';
  } else if (library.presets().empty()) {
    std::cout << "There are no presets: " << library.index().string()
              << " does not exist or lists none.\n";
  } else if (meant.empty()) {
    throw UsageError("no preset has all of these words in its name or description");
  } else {
    printForPeople(meant);
    if (options.words.empty())
      std::cout << "\nin " << library.index().parent_path().string() << '\n';
  }
}

}  // namespace

void addPresetsCommand(CLI::App& app) {
  const auto options = std::make_shared<PresetsOptions>();
  CLI::App* command = app.add_subcommand("presets", "List the presets beside the module");
  command->add_option("TEXT", options->words, "Words of the name or the description")
      ->type_name("");
  CLI::Option* json = command->add_flag("--json", options->json, "As JSON, for scripts");
  command->add_flag("--names", options->names, "The names alone, one a line")->excludes(json);
  addModuleOption(*command, options->module);
  command->callback([options] { listPresets(*options); });
}

}  // namespace cli
