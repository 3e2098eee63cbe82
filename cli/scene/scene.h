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
  std::string inputPlace;             // where it was written, for messages; empty for an option
  std::optional<Mask> mask;           // the value of the path parameter
  std::vector<PresetChoice> presets;  // the file's, then the command line's
  std::vector<Setting> settings;      // likewise
};

// Throws WorkError naming the file, the line, the key and what would be valid.
Scene readScene(const std::filesystem::path& file);

// The name of a --preset option.
PresetChoice presetFromOption(const std::string& name);

// The "LABEL=VALUE" of a --set option. Throws UsageError when it has no equals sign.
Setting settingFromOption(const std::string& text);

}  // namespace cli
