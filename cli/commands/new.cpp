#include <iostream>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/scene_schema.h"
#include "cli/media/output_files.h"
#include "cli/scene/effect.h"
#include "cli/scene/scene_plan.h"
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

constexpr char kSceneTable[] = R"([scene]
size = [1280, 720]
frames = 100
fps = 25
preroll = 30               # steps before frame 0, so that the clip starts in full swing
# input = "clip.mp4"       # a still or a clip that stars go over, relative to this file;
                           # size, frames and fps are the input's where they are left out
)";

constexpr char kOwnLook[] = R"(
[params]                                    # "brisel params" lists them all
"Standard path" = "Bezier"                  # where stars are born; also "Point", "Line", "Circle"
"Start" = [0.1, 0.7]                        # points are fractions of the frame
"Control start" = [0.35, 0.1]
"End" = [0.65, 0.9]
"Control end" = [0.9, 0.3]
"Intensity" = 10                            # births in every two frames
"Maximum number of stars" = 150
"Orientation" = "Random all directions"
"Initial speed" = [ { frame = 0, value = 5 }, { frame = "4s", value = 25 } ]   # keyframes
"Speed dispersion" = 80                     # percent
"Terminate type" = "Fade"
"Time life" = 40                            # frames
"Time life dispersion" = 60
"Type" = "Type 6"                           # what a star looks like
"Size" = 6                                  # half percent of the frame's width
"Size dispersion" = 80
"Color of particles" = "#ffcc66"
)";

constexpr char kOverPresets[] = R"(
[params]                                    # these win over the presets; "brisel params" lists all
# "Start" = [0.5, 0.5]                      # points are fractions of the frame
# "Intensity" = 12                          # births in every two frames
# "Size" = 6                                # half percent of the frame's width
# "Color of particles" = "#ffcc66"
# "Direction" = [ { frame = 0, value = 0 }, { frame = "4s", value = 360 } ]     # keyframes
)";

// Editors look the schema up by this line; to everybody else it is a comment.
std::string schemaLine() {
  const std::filesystem::path schema = installedSchema();
  if (schema.empty()) return "";
  std::string url = "file://";
  for (const char c : schema.string()) url += c == ' ' ? "%20" : std::string(1, c);
  return "#:schema " + url + "\n";
}

std::string presetsLine(const NewOptions& options) {
  const scene::PresetLibrary library = presetsBeside(findModule(options.module));
  std::string names;
  for (const std::string& option : options.presets) {
    const std::string& name = library.find(presetFromOption(option)).name;
    names += (names.empty() ? "" : ", ") + inQuotes(name);
  }
  return "presets = [" + names + "]\n";
}

std::string starter(const NewOptions& options) {
  const std::string name = std::filesystem::path(options.scene).filename();
  const std::string stem = std::filesystem::path(name).stem();
  std::string text = schemaLine() + "# Render it with: brisel render " + name + " -o " + stem +
                     ".mp4\n\n" + kSceneTable;
  if (options.presets.empty()) return text + kOwnLook;
  return text + presetsLine(options) + kOverPresets;
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
