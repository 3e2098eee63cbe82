#include <memory>
#include <optional>

#include "cli/commands/commands.h"
#include "cli/media/output_files.h"
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
  OutputOptions output;
  std::optional<std::string> frames;
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
  const std::vector<int> frames = framesToWrite(target, range, plan.scene.depth, options.output);
  const int there = range.count() - static_cast<int>(frames.size());
  if (there > 0) {
    note(std::to_string(there) + " of " + std::to_string(range.count()) + " frames of " +
         target.name() + " are there already");
  }
  if (frames.empty()) return;

  const int rendered = plan.scene.preroll + frames.back() + 1;
  Progress progress(target.isStandardOutput() ? target.name() : target.path.filename().string(),
                    rendered);
  SceneRenderer renderer(plan, options.module);
  for (const std::string& text : renderer.notes()) note(text);
  OutputStream output(openFrameWriter(target, plan.size, plan.rate, plan.scene.depth), plan.size,
                      plan.scene.depth);
  int written = 0;
  const auto showProgress = [&] {
    for (; written < output.framesWritten(); ++written) progress.frameDone();
  };
  auto next = frames.begin();
  for (int frame = -plan.scene.preroll; frame <= frames.back(); ++frame) {
    renderer.renderNext();
    if (frame < *next) {
      progress.frameDone();
    } else {
      renderer.lookForStars();
      output.write(renderer.output(), frame);
      ++next;
      showProgress();
    }
  }
  output.finish();
  showProgress();
  const double seconds = progress.elapsedSeconds();
  progress.finish(static_cast<int>(frames.size()));
  for (const std::string& warning : renderer.warnings()) warn(warning);
  if (options.stats) {
    printRenderStats(target.isStandardOutput() ? stderr : stdout,
                     {{"decode", renderer.decodingSeconds()},
                      {"render", renderer.renderingSeconds()},
                      {"encode", output.encodingSeconds(), output.threads()}},
                     rendered, seconds);
  }
}

}  // namespace

void addRenderCommand(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  CLI::App* command = app.add_subcommand("render", "Render a scene to pictures or a clip");
  command->add_option("SCENE", options->scene, "The scene file, TOML")->type_name("")->required();
  addOutputOptions(*command, options->output);
  addSceneOptions(*command, options->overrides);
  command
      ->add_option("--frames", options->frames,
                   "Frames to write, counted from 0; those before are\n"
                   "rendered unseen, as each frame follows from the last")
      ->type_name("A-B");
  command->add_flag("--stats", options->stats,
                    "Say how busy decoding, rendering and encoding were");
  addModuleOption(*command, options->module);
  command->callback([options] { render(*options); });
}

}  // namespace cli
