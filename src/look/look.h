// What a plug-in draws before its host's parameters have a say: a scene or the effect's defaults,
// and presets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "effect/values.h"
#include "engine/mask_outline.h"
#include "scene/layer_values.h"

namespace brisel {

/// What a look is made from.
struct LookSource {
  std::filesystem::path scene;              // or empty
  std::filesystem::file_time_type saved{};  // when the scene was, so that an edited one is another
  std::string presets;                      // names, separated by commas or blanks
  std::optional<scene::FrameRate>
      rate{};           // by which times in seconds are counted where the scene tells none
  std::string mask{};   // SVG path data in place of the layers' masks, or empty
  bool hasClip = true;  // which the stars go over

  friend bool operator==(const LookSource&, const LookSource&) = default;
};

/// Layers from the bottom up, at least one. Where a scene is made for frames of another size, they
/// are taken as that layer at a reduced resolution: what is drawn is as large in proportion. So is
/// a frame that the host itself shows reduced from `full`.
class Look {
 public:
  /// Throws std::runtime_error with one sentence, without an end, when there is no such look, and
  /// std::bad_alloc.
  Look(const LookSource& source, FrameSize frame) : Look(source, frame, frame) {}
  Look(const LookSource& source, FrameSize frame, FrameSize full);

  std::size_t layerCount() const { return layers_.size(); }
  std::int32_t preroll() const { return scene_.preroll; }  // steps before frame 0
  bool highQuality() const { return scene_.highQuality; }
  std::int32_t layerWidth() const { return full_.width; }  // at full resolution, pixels
  std::optional<scene::FrameRate> rate() const { return scene_.rate; }

  /// Points are pixels of the frame.
  Values valuesAt(std::size_t layer, std::int32_t frame) const;

  /// Whether the layer is to be drawn with these values alone, and added as light to those below.
  bool isToBeAdded(std::size_t layer, const Values& values) const {
    return layers_[layer].isToBeAdded(values);
  }

  /// Nothing when the layer has no mask. Throws std::bad_alloc.
  std::optional<MaskOutline> maskAt(std::size_t layer, std::int32_t frame) const;

 private:
  bool isReduced() const;

  FrameSize frame_;
  scene::Scene scene_;
  FrameSize full_;
  std::vector<scene::LayerValues> layers_;
};

}  // namespace brisel
