// One layer of a scene as the effect takes it: the values of all parameters, and the outline of the
// mask, at any frame.
#pragma once

#include <bitset>
#include <optional>
#include <string>
#include <vector>

#include "scene/scene.h"

namespace scene {

/// What a scene leaves to whoever renders it.
struct Surroundings {
  brisel::FrameSize size;  // of the frame at full resolution, pixels; points are shares of it
  FrameRate rate;          // by which times in seconds are counted
  bool hasInput = false;   // a picture that the first layer goes over
};

/// Keeps nothing of what it was made from. May be asked by several threads at once.
class LayerValues {
 public:
  /// The scene's layer of that index, from the bottom. Its own settings win over its presets, and
  /// both over what the scene says for all layers. Stars are added to an input where nothing says
  /// how to mix.
  ///
  /// Throws WorkError, or UsageError for an option, naming the place, the label or preset, and what
  /// would be valid.
  LayerValues(const Scene& scene, std::size_t layer, const Surroundings& around,
              const PresetLibrary& presets);

  /// At that frame, counted from 0; before it all stands as at frame 0. Points are pixels of the
  /// frame. Of a layer with a mask, the value of "Path" is 1.
  brisel::Values at(double frame) const;

  /// The outline at that frame, for the effect; nothing when the layer has no mask.
  std::optional<brisel::MaskOutline> maskAt(double frame) const;

  /// The layer's mask, its times in frames.
  const std::optional<Mask>& mask() const { return mask_; }

  /// Whether the effect renders the stars of a frame with these values alone, and they are to be
  /// added as light to those of the layers below: where there is no input, or the scene leaves it
  /// out.
  bool isToBeAdded(const brisel::Values& values) const;

  /// Whether the scene, a preset or an option says what the parameter is to be.
  bool sets(brisel::ParamIndex index) const { return set_[static_cast<std::size_t>(index)]; }

  /// What was chosen where the scene leaves it open and a person may have expected something else:
  /// sentences without an end.
  const std::vector<std::string>& notes() const { return notes_; }

 private:
  void applyPresets(const std::vector<PresetChoice>& choices, const PresetLibrary& presets);
  void chooseMix(bool isFirst, bool hasInput);

  brisel::FrameSize size_;
  brisel::Values base_;        // the defaults, and what presets make of them
  std::vector<Track> tracks_;  // go over that
  std::optional<Mask> mask_;
  std::bitset<brisel::kParamCount> set_;
  bool joinsWhenAlone_ = false;
  bool joinsWhenAdded_ = false;
  std::vector<std::string> notes_;
};

}  // namespace scene
