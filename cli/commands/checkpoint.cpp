#include <cstdio>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/media/output_files.h"
#include "cli/pipeline/memory_need.h"
#include "cli/pipeline/progress.h"
#include "cli/pipeline/scene_renderer.h"
#include "cli/support/errors.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

struct CheckpointOptions {
  std::string scene;
  SceneOptions overrides;
  std::string output;
  int every = 250;
  bool overwrite = false;
  std::string module;
};

// Before frame 0 there are stars after a pre-roll only.
std::vector<int> framesWithStates(const ScenePlan& plan, int every) {
  std::vector<int> frames;
  const int first = plan.scene.preroll > 0 ? 0 : every;
  for (int frame = first; frame < plan.frames; frame += every) frames.push_back(frame);
  if (frames.empty()) {
    throw UsageError("--every " + std::to_string(every) + ": the scene has the frames 0-" +
                     std::to_string(plan.frames - 1) + ", which leaves no state to be written");
  }
  return frames;
}

void writeStates(const CheckpointOptions& options) {
  const ScenePlan plan = planScene(readScene(options.scene, options.overrides), options.overrides);
  checkMemory(plan, 1);
  const std::vector<int> frames = framesWithStates(plan, options.every);
  const std::string pattern =
      options.output.empty() ? plan.scene.file.stem().string() + "_%06d.state" : options.output;
  std::vector<std::filesystem::path> files;
  for (const int frame : frames) {
    const auto file = numberedFile(pattern, frame);
    if (!file) {
      throw UsageError("states are numbered files, such as name_%06d.state, not " +
                       inQuotes(pattern));
    }
    checkOutputFile(files.emplace_back(*file), options.overwrite);
  }

  const auto first = std::chrono::steady_clock::now();
  {
    Progress progress(pattern, plan.scene.preroll + frames.back(), 0);
    SceneRenderer renderer(plan, {.module = options.module, .jobs = 1, .threads = 1},
                           {.state = {}, .firstSeen = frames.back()});
    int next = renderer.firstFrame();
    for (std::size_t i = 0; i < frames.size(); ++i) {
      for (; next < frames[i]; ++next) {
        renderer.stepNext(renderer.readNext());
        progress.stepDone();
      }
      writeWholeFile(files[i], bytesOf(renderer.state()));
    }
    if (const std::string damage = renderer.damage(); !damage.empty()) {
      if (!plan.reading.tolerateDamage) {
        throw WorkError(damage + "; " + inQuotes(pattern) + kWrittenAllTheSame);
      }
      warn(damage);
    }
  }
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - first;
  std::fprintf(stderr, "%s: %zu %s in %.1f s\n", pattern.c_str(), frames.size(),
               frames.size() == 1 ? "state" : "states", seconds.count());
}

}  // namespace

void addCheckpointCommand(CLI::App& app) {
  const auto options = std::make_shared<CheckpointOptions>();
  CLI::App* command = app.add_subcommand(
      "checkpoint", "Write the stars of a scene now and then, to render on from there");
  command->add_option("SCENE", options->scene, "The scene file, TOML")->type_name("")->required();
  command
      ->add_option("-o,--output", options->output,
                   "The files to write, numbered by the frame that the\n"
                   "stars stand before: name_%06d.state; otherwise in\n"
                   "this folder, named as the scene")
      ->type_name("FILES");
  command->add_option("--every", options->every, "Frames from state to state, 250 if not given")
      ->option_text("N")
      ->check(CLI::Range(1, scene::kMaxFrames));
  command->add_flag("--overwrite", options->overwrite, "Replace files that exist");
  addSceneOptions(*command, options->overrides);
  addModuleOption(*command, options->module);
  command->callback([options] { writeStates(*options); });
}

}  // namespace cli
