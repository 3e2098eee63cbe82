#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/render_job.h"
#include "cli/pipeline/progress.h"
#include "cli/pipeline/render_pipeline.h"
#include "cli/pipeline/render_stats.h"
#include "cli/pipeline/scene_renderer.h"

namespace cli {
namespace {

void renderJob(const RenderJob& job, const RenderOptions& options) {
  const auto& [scene, plan, target, range, frames, sound, start] = job;
  const int there = range.count() - static_cast<int>(frames.size());
  if (there > 0) {
    note(std::to_string(there) + " of " + std::to_string(range.count()) + " frames of " +
         target.name() + " are there already");
  }
  if (frames.empty()) return;

  const int firstStep = start.state ? start.state->frame : -plan.scene.preroll;
  const int steps = frames.front() - firstStep;
  Progress progress(target.isStandardOutput() ? target.name() : target.path.filename().string(),
                    steps, static_cast<int>(frames.size()), options.secondsBetweenLines);
  SceneRenderer renderer(plan, options.renderer, start);
  for (const std::string& text : renderer.notes()) note(ofScene(scene, text));
  const auto writer = openFrameWriter(target, plan.size, plan.rate, plan.depth, sound.get());
  StageTimes times;
  renderFrames(renderer, *writer, frames, progress, times);
  const double seconds = progress.elapsedSeconds();
  progress.finish();
  if (there == 0) {  // else the frames kept may show stars
    for (const std::string& warning : renderer.warnings()) warn(ofScene(scene, warning));
  }
  if (const std::string text = writer->warning(); !text.empty()) warn(ofScene(scene, text));
  if (options.stats) {
    printRenderStats(target.isStandardOutput() ? stderr : stdout, times, renderer.jobs(),
                     !target.holdsPictures(), static_cast<int>(frames.size()), seconds);
  }
  const std::string damage = renderer.damage();
  if (damage.empty()) return;
  if (!options.overrides.reading.tolerateDamage) {
    throw WorkError(damage + "; " + target.name() + kWrittenAllTheSame);
  }
  warn(damage);
}

void render(const RenderOptions& options) {
  for (const RenderJob& job : planJobs(options)) {
    namingScene(job.scene, [&] { renderJob(job, options); });
  }
}

}  // namespace

void addRenderOptions(CLI::App& command, RenderOptions& options) {
  addOutputOptions(command, options.output);
  addSceneOptions(command, options.overrides);
  command
      .add_option("--frames", options.frames,
                  "Frames to write, counted from 0; stars move unseen\n"
                  "through those before, as each follows from the last")
      ->type_name("A-B");
  command
      .add_option("--from-state", options.fromState,
                  "Go on from stars that \"brisel checkpoint\" wrote,\n"
                  "instead of from the start; name_%06d.state stands\n"
                  "for the nearest one before the frames to write")
      ->type_name("FILE");
  command
      .add_option("--jobs", options.renderer.jobs,
                  "Threads that read, paint, encode and write side by\n"
                  "side; otherwise one for each processor that may be\n"
                  "used")
      ->option_text("N")
      ->check(CLI::Range(1, hostkit::Session::kMostThreads));
  addThreadsOption(command, options.renderer.threads, "as many\nas jobs");
  addModuleOption(command, options.renderer.module);
}

void addRenderCommand(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  CLI::App* command = app.add_subcommand("render", "Render a scene to pictures or a clip");
  command
      ->add_option("SCENE", options->scenes,
                   "The scene files, TOML; for several, -o has {scene} in\n"
                   "its name: \"out/{scene}.mp4\"")
      ->type_name("")
      ->required();
  addRenderOptions(*command, *options);
  command->add_flag("--stats", options->stats,
                    "Say how busy decoding, steps, rendering and encoding\n"
                    "were, and which of them the others waited for");
  command
      ->add_option("--progress", options->secondsBetweenLines,
                   "Seconds between the lines that say how far it is,\n"
                   "where there is no terminal with a bar; otherwise 5")
      ->option_text("SECONDS")
      ->check(CLI::Range(0.1, 86400.0));
  command->callback([options] { render(*options); });
}

}  // namespace cli
