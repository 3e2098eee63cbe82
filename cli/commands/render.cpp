#include <memory>
#include <optional>

#include "cli/commands/commands.h"
#include "cli/pipeline/output_stream.h"
#include "cli/pipeline/progress.h"
#include "cli/pipeline/render_stats.h"
#include "cli/pipeline/scene_renderer.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

struct RenderOptions {
  std::string scene;
  SceneOptions overrides;
  std::string output;
  std::optional<std::string> frames;
  bool overwrite = false;
  bool stats = false;
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

  Progress progress(target.path.filename().string(), plan.scene.preroll + range.last + 1);
  SceneRenderer renderer(plan, options.module);
  for (const std::string& text : renderer.notes()) note(text);
  OutputStream output(openFrameWriter(target, plan.size, plan.rate, plan.scene.depth), plan.size,
                      plan.scene.depth, range.first);
  int written = 0;
  const auto showProgress = [&] {
    for (; written < output.framesWritten(); ++written) progress.frameDone();
  };
  for (int frame = -plan.scene.preroll; frame <= range.last; ++frame) {
    renderer.renderNext();
    if (frame < range.first) {
      progress.frameDone();
    } else {
      renderer.lookForStars();
      output.write(renderer.output(), frame);
      showProgress();
    }
  }
  output.finish();
  showProgress();
  const double seconds = progress.elapsedSeconds();
  progress.finish(range.count());
  for (const std::string& warning : renderer.warnings()) warn(warning);
  if (options.stats) {
    printRenderStats({{"decode", renderer.decodingSeconds()},
                      {"render", renderer.renderingSeconds()},
                      {"encode", output.encodingSeconds(), output.threads()}},
                     plan.scene.preroll + range.last + 1, seconds);
  }
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
  command->add_flag("--stats", options->stats,
                    "Say how busy decoding, rendering and encoding were");
  addModuleOption(*command, options->module);
  command->callback([options] { render(*options); });
}

}  // namespace cli
