// What a run of `brisel render` has to do, found out before its first frame.
#pragma once

#include <CLI/CLI.hpp>
#include <future>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "cli/media/output_files.h"
#include "cli/media/soundtrack.h"
#include "cli/pipeline/progress.h"
#include "cli/pipeline/scene_renderer.h"
#include "cli/scene/scene_plan.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"

namespace cli {

struct RenderOptions {
  std::vector<std::string> scenes;
  SceneOptions overrides;
  OutputOptions output;
  std::optional<std::string> frames;
  std::string fromState;  // a file or a pattern; empty: from the start
  bool stats = false;
  double secondsBetweenLines = Progress::kBetweenLines;  // of progress
  RendererOptions renderer;
};

// The sound or none, which another program is asked about while the work begins.
using FoundSound = std::shared_future<std::optional<Soundtrack>>;

// All options of a render but the scenes and those that only a render has.
void addRenderOptions(CLI::App& command, RenderOptions& options);

// One scene of a run, with its output.
struct RenderJob {
  std::string scene;  // for messages; empty when it is the only one
  ScenePlan plan;
  OutputTarget target;
  FrameRange range;
  std::vector<int> frames;  // those of the range that are to be written
  FoundSound sound;
  RenderStart start;
};

// One job for each scene. Throws when something is wrong with any of them, naming it, or when two
// would write the same file.
std::vector<RenderJob> planJobs(const RenderOptions& options);

// Tells one state of a scene's file from another.
std::string sceneDigest(const scene::Scene& scene);

// The message, with the scene in front unless that is named already or is the only one.
std::string ofScene(const std::string& scene, const std::string& message);

// Does work for a scene; a failure then names it.
template <typename Work>
auto namingScene(const std::string& scene, const Work& work) {
  try {
    return work();
  } catch (const Interrupted&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const UsageError& error) {
    throw UsageError(ofScene(scene, error.what()));
  } catch (const std::exception& error) {
    throw WorkError(ofScene(scene, error.what()));
  }
}

}  // namespace cli
