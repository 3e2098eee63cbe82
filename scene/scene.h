// Scene files: what to render, as TOML.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/geometry.h"
#include "scene/animation.h"
#include "scene/file_access.h"
#include "scene/frame_rate.h"
#include "scene/mask.h"
#include "scene/preset_library.h"

namespace scene {

inline constexpr int kMaxSide = 30000;  // pixels
inline constexpr int kMaxFrames =
    1'000'000;  // twice that many steps of 1001 are still a 32-bit host time
inline constexpr int kMaxLayers = 64;
/// Of all layers together, those for all of them counted in each.
inline constexpr std::size_t kMaxKeyframes = 250'000;
inline constexpr std::size_t kMaxSceneVertices = 1'000'000;  // of masks, at all their keyframes

/// What one instance of the effect draws: over the input, and over the layers before it.
struct Layer {
  std::string name;                   // for messages; empty when it has none
  std::optional<Mask> mask;           // the value of the path parameter
  std::vector<PresetChoice> presets;  // in ascending order of their origins
  std::vector<Setting> settings;      // likewise
};

/// As it was read: times may still be seconds, and whether the effect takes the values is for
/// LayerValues to say.
struct Scene {
  std::filesystem::path file;
  std::optional<brisel::FrameSize> size;  // none: the input's
  std::optional<int> frames;              // none: the input's
  int preroll = 0;                        // steps before frame 0
  std::optional<FrameRate> rate;          // none: the input's
  int depth = 8;                          // bits per channel, 8 or 16
  bool highQuality = true;                // smooth edges of rays
  std::filesystem::path input;            // as to be opened; empty: a transparent layer
  std::string inputPlace;                 // where it was written, for messages; or empty
  /// From the bottom up, at least one. What the scene says for all of them is in each.
  std::vector<Layer> layers = std::vector<Layer>(1);
};

/// Names the layer, from 0, at the start of a message about it: "layer "tail": "; empty when the
/// scene has but one.
std::string layerPrefix(const Scene& scene, std::size_t layer);

/// The SVG files that it names are read as well; whether the input may be opened is for who opens
/// it to ask of checkAccess. Throws WorkError naming the file, the line, the key and what would be
/// valid.
Scene readScene(const std::filesystem::path& file, const FileAccess& access = {});

/// The same of a text that the file is to hold: what it names lies beside that file.
Scene sceneFromText(const std::filesystem::path& file, std::string text,
                    const FileAccess& access = {});

}  // namespace scene
