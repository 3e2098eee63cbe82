// Scene files: what to render, as TOML.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/media/frame_rate.h"
#include "cli/media/media_source.h"
#include "cli/pictures/frame.h"
#include "cli/scene/animation.h"
#include "cli/scene/mask.h"
#include "cli/scene/preset_choice.h"

namespace cli {

inline constexpr int kMaxSide = 30000;  // pixels
inline constexpr int kMaxFrames =
    1'000'000;  // twice that many steps of 1001 are still a 32-bit host time
inline constexpr int kMaxLayers = 64;

// What one instance of the effect draws: over the input, and over the layers before it.
struct Layer {
  std::string name;                   // for messages; empty when it has none
  std::optional<Mask> mask;           // the value of the path parameter
  std::vector<PresetChoice> presets;  // in ascending order of their origins
  std::vector<Setting> settings;      // likewise
};

struct Scene {
  std::filesystem::path file;
  std::optional<FrameSize> size;  // none: the input's
  std::optional<int> frames;      // none: the input's
  int preroll = 0;                // steps before frame 0
  std::optional<FrameRate> rate;  // none: the input's
  Depth depth = Depth::k8;
  bool highQuality = true;
  int reduction = 1;            // the layer's sides by those of the frames: 1 to 4
  std::filesystem::path input;  // as to be opened; empty: a transparent layer
  InputChoices reading;
  std::string inputPlace;  // where it was written, for messages; empty for an option
  // From the bottom up, at least one. What the scene says for all of them is in each.
  std::vector<Layer> layers = std::vector<Layer>(1);
};

// Names the layer, from 0, at the start of a message about it: "layer "tail": "; empty when the
// scene has but one.
std::string layerPrefix(const Scene& scene, std::size_t layer);

// Throws WorkError naming the file, the line, the key and what would be valid.
Scene readScene(const std::filesystem::path& file);

// The name of a --preset option.
PresetChoice presetFromOption(const std::string& name);

// The "LABEL=VALUE" of a --set option. Throws UsageError when it has no equals sign.
Setting settingFromOption(const std::string& text);

}  // namespace cli
