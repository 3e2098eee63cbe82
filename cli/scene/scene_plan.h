// A scene with everything decided: what the file and the options leave open comes from the input.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "cli/media/media_info.h"
#include "cli/media/media_source.h"
#include "cli/pictures/frame.h"
#include "scene/scene.h"

namespace cli {

struct ScenePlan {
  scene::Scene scene;
  FrameSize layer{1280, 720};  // what the scene is designed for
  int reduction = 1;           // its sides by those of the frames: 1 to 4
  FrameSize size;              // of the frames, which show all of it
  Depth depth = Depth::Bits8;
  int frames = 100;
  scene::FrameRate rate;
  InputChoices reading;
  std::optional<MediaInfo> input;  // of scene.input
  std::uint64_t memoryLimit = 0;   // bytes that its frames may take
};

// What the command line may say about a scene; empty or none where it says nothing.
struct SceneOptions {
  std::string input;
  InputChoices reading;
  std::string size;
  std::string scale;
  std::optional<int> preroll;
  std::string rate;
  std::string depth;
  std::string quality;
  std::vector<std::string> presets;
  std::vector<std::string> settings;
  std::optional<std::uint64_t> memoryLimit;  // bytes; none: three quarters of all
  std::vector<std::string> allowed;  // folders that scenes may name files in, besides their own
};

// The scene of a file, which may come from a stranger. Throws as scene::readScene does.
scene::Scene readScene(const std::filesystem::path& file, const SceneOptions& options);

// Looks at the scene's input. Throws WorkError when it cannot be read, or must not be, naming the
// scene's line where that names the input.
using ProbeInput = std::function<MediaInfo(const scene::Scene& scene, const InputChoices& reading,
                                           const SceneOptions& options)>;
MediaInfo probeInput(const scene::Scene& scene, const InputChoices& reading,
                     const SceneOptions& options);

// Options win over the scene file, and the input says what both leave open. Throws UsageError when
// an option makes no sense, and what `probe` throws.
ScenePlan planScene(scene::Scene scene, const SceneOptions& options = {},
                    const ProbeInput& probe = probeInput);

// An empty world of the size and depth of the plan's frames.
hostkit::World worldFor(const ScenePlan& plan);

// Throws UsageError when one of them makes no sense.
void checkOptions(const SceneOptions& options);

// The name of a --preset option.
scene::PresetChoice presetFromOption(const std::string& name);

// The "LABEL=VALUE" of a --set option. Throws UsageError when it has no equals sign.
scene::Setting settingFromOption(const std::string& text);

}  // namespace cli
