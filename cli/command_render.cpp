#include <memory>
#include <optional>
#include <set>

#include "commands.h"
#include "errors.h"
#include "frame_writer.h"
#include "progress.h"
#include "scene_renderer.h"

namespace cli {
namespace {

struct RenderOptions {
  std::string scene;
  SceneOptions overrides;
  std::string output;
  std::optional<std::string> frames;
  bool overwrite = false;
  std::string module;
};

FrameRange rangeToRender(const RenderOptions& options, const ScenePlan& plan) {
  const FrameRange whole{0, plan.frames - 1};
  if (!options.frames) return whole;
  const FrameRange range = parseFrameRange(*options.frames);
  if (range.last > whole.last) {
    throw UsageError("--frames " + inQuotes(*options.frames) + ": the scene has the frames 0-" +
                     std::to_string(whole.last));
  }
  return range;
}

void render(const RenderOptions& options) {
  const OutputTarget target = parseOutputTarget(options.output);
  Scene scene = readScene(options.scene);
  applyOptions(scene, options.overrides);
  const ScenePlan plan = planScene(std::move(scene));
  const FrameRange range = rangeToRender(options, plan);
  checkOutput(target, range, options.overwrite);

  SceneRenderer renderer(plan, options.module);
  std::set<std::string> warned;
  const auto warnOnce = [&] {
    for (const std::string& warning : renderer.warnings()) {
      if (warned.insert(warning).second) warn(warning);
    }
  };
  warnOnce();

  const auto writer = openFrameWriter(target, plan.size, plan.rate, plan.scene.depth);
  Progress progress(target.path.filename().string(), range.last + 1);
  for (int frame = 0; frame <= range.last; ++frame) {
    renderer.renderNext();
    if (frame >= range.first) writer->write(renderer.picture(), frame);
    progress.frameDone();
  }
  writer->finish();
  progress.finish(range.count());
  warnOnce();
}

}  // namespace

void addRenderCommand(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  CLI::App* command = app.add_subcommand("render", "Render a scene to pictures or a clip");
  command->add_option("SCENE", options->scene, "The scene file, TOML")->type_name("")->required();
  command
      ->add_option("-o,--output", options->output,
                   "What to write, told by its name:\n"
                   "name_%04d.png  numbered frames with alpha\n"
                   "name.png       one frame with alpha\n"
                   "name.mov       lossless clip with alpha\n"
                   "name.mp4       clip over black\n"
                   "name.gif       animation over black\n"
                   "name.apng      lossless animation with alpha\n"
                   "name.webp      small animation with alpha")
      ->type_name("FILE")
      ->required();
  addSceneOptions(*command, options->overrides);
  command
      ->add_option("--frames", options->frames,
                   "Frames to write, counted from 0; those before are\n"
                   "rendered unseen, as each frame follows from the last")
      ->type_name("A-B");
  command->add_flag("--overwrite", options->overwrite, "Replace outputs that exist");
  addModuleOption(*command, options->module);
  command->callback([options] { render(*options); });
}

}  // namespace cli
