#include <memory>

#include "cli/commands/commands.h"
#include "cli/media/output_files.h"
#include "cli/media/png_writer.h"
#include "cli/pictures/panel.h"
#include "cli/scene/layer_effect.h"
#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

// Room for the effect's own controls at their full width, pixels.
constexpr int kPanelWidth = 1065;

struct PanelOptions {
  std::string scene;
  SceneOptions overrides;
  std::string output;
  std::vector<std::string> clicks;
  std::string hover;
  int width = kPanelWidth;
  bool overwrite = false;
  std::string module;
};

struct Place {
  std::string option;  // as written, for messages
  PF_Point point;
};

Place placeFromOption(const std::string& name, const std::string& text) {
  const std::string option = name + " " + inQuotes(text);
  const std::size_t comma = text.find(',');
  const auto x = scene::parseInteger(text.substr(0, comma));
  const auto y =
      comma == std::string::npos ? std::nullopt : scene::parseInteger(text.substr(comma + 1));
  if (!x || !y) throw UsageError(option + ": a place is X,Y in pixels of the picture");
  return {option, {*x, *y}};
}

void checkHit(bool hit, const Place& place) {
  if (!hit) throw UsageError(place.option + ": no control of the effect's own lies there");
}

// The about text's first line.
std::string titleOf(hostkit::Session& session) {
  const std::string about = session.about();
  return about.substr(0, about.find('\r'));
}

void paintPanel(const PanelOptions& options) {
  if (!parseOutputTarget(options.output).isOnePng()) {
    throw UsageError("the panel is one picture, such as panel.png, not " +
                     inQuotes(options.output));
  }
  std::vector<Place> clicks;
  for (const std::string& text : options.clicks) clicks.push_back(placeFromOption("--click", text));
  std::optional<Place> hover;
  if (!options.hover.empty()) hover = placeFromOption("--hover", options.hover);
  checkOutputFile(options.output, options.overwrite);

  scene::Scene scene =
      options.scene.empty() ? scene::Scene{} : readScene(options.scene, options.overrides);
  LayerEffect effect(loadModule(options.module), planScene(std::move(scene), options.overrides), 0);
  effect.setFrame(0);

  Panel panel(effect.session(), titleOf(effect.session()), options.width);
  Frame picture = panel.paint();
  for (const Place& place : clicks) {
    checkHit(panel.click(place.point), place);
    picture = panel.paint();
  }
  if (hover) {
    checkHit(panel.hover(hover->point), *hover);
    picture = panel.paint();
  }
  writePng(picture, options.output);
}

}  // namespace

void addPanelCommand(CLI::App& app) {
  const auto options = std::make_shared<PanelOptions>();
  CLI::App* command = app.add_subcommand("panel", "Show the effect's controls as a picture");
  command
      ->add_option("SCENE", options->scene,
                   "A scene file, TOML, whose values at frame 0 are\n"
                   "shown, of layers the first's; otherwise the defaults")
      ->type_name("");
  command->add_option("-o,--output", options->output, "The picture to write")
      ->type_name("FILE.png")
      ->required();
  addValueOptions(*command, options->overrides);
  addAllowOption(*command, options->overrides);
  command
      ->add_option("--click", options->clicks,
                   "Click at that pixel of the picture, on a control of\n"
                   "the effect's own; may be repeated")
      ->type_name("X,Y")
      ->allow_extra_args(false);
  command
      ->add_option("--hover", options->hover, "Leave the pointer at that pixel, after the clicks")
      ->type_name("X,Y");
  command
      ->add_option("--width", options->width,
                   "Width of the picture in pixels, 1065 if not given;\n"
                   "rows of presets scroll when it is less")
      ->option_text("PIXELS")
      ->check(CLI::Range(600, 4096));
  command->add_flag("--overwrite", options->overwrite, "Replace an existing picture");
  addModuleOption(*command, options->module);
  command->callback([options] { paintPanel(*options); });
}

}  // namespace cli
