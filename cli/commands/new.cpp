#include <iostream>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/scene_schema.h"
#include "cli/media/output_files.h"
#include "cli/scene/effect.h"
#include "cli/scene/scene_plan.h"
#include "cli/scene/starter_scene.h"
#include "cli/support/errors.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

struct NewOptions {
  std::string scene;
  std::vector<std::string> presets;
  bool overwrite = false;
  std::string module;
};

// Editors look the schema up by this line; to everybody else it is a comment.
std::string schemaLine() {
  const std::filesystem::path schema = installedSchema();
  if (schema.empty()) return "";
  std::string url = "file://";
  for (const char c : schema.string()) url += c == ' ' ? "%20" : std::string(1, c);
  return "#:schema " + url + "\n";
}

std::string starter(const NewOptions& options) {
  std::vector<std::string> names;
  if (!options.presets.empty()) {
    const scene::PresetLibrary library = presetsBeside(findModule(options.module));
    for (const std::string& option : options.presets) {
      names.push_back(library.find(presetFromOption(option)).name);
    }
  }
  return schemaLine() + starterScene(std::filesystem::path(options.scene).filename(), names);
}

void writeStarter(const NewOptions& options) {
  const std::filesystem::path file = options.scene;
  if (file.extension() != ".toml") {
    throw UsageError("a scene is a TOML file, such as scene.toml, not " + inQuotes(options.scene));
  }
  checkOutputFile(file, options.overwrite);
  const std::string text = starter(options);
  writeWholeFile(file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  std::cout << options.scene << ": now \"brisel render " << options.scene << " -o "
            << file.stem().string() << ".mp4\"\n";
}

}  // namespace

void addNewCommand(CLI::App& app) {
  const auto options = std::make_shared<NewOptions>();
  CLI::App* command = app.add_subcommand("new", "Write a scene to start from, with comments");
  command->add_option("SCENE", options->scene, "The scene file to write, such as scene.toml")
      ->type_name("")
      ->required();
  command
      ->add_option("--preset", options->presets,
                   "A preset that \"brisel presets\" lists, to start\n"
                   "from; may be repeated")
      ->type_name("PRESET")
      ->allow_extra_args(false);
  command->add_flag("--overwrite", options->overwrite, "Replace an existing scene");
  addModuleOption(*command, options->module);
  command->callback([options] { writeStarter(*options); });
}

}  // namespace cli
