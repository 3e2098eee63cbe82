// Parameter values over time.
#pragma once

#include <string>
#include <vector>

#include "scene/keyframe.h"
#include "scene/origin.h"
#include "scene/parameter_values.h"

namespace scene {

/// One entry of [params] or of [layer.params], or one option, not yet checked against what the
/// effect declares.
struct Setting {
  using Key = KeyOf<UserValue>;
  std::string label;
  std::vector<Key> keys;  // one for a constant; else keyframes
  std::string place;      // where it was written, for messages: "fire.toml:12"
  Origin origin = Origin::Scene;
};

/// A setting that a parameter can hold.
struct Track {
  using Key = KeyOf<ParamValue>;
  brisel::ParamIndex parameter;
  Origin origin;
  std::vector<Key> keys;  // in order, times in frames
};

/// Finds each setting's parameter and checks its keys. A later setting of the same parameter
/// replaces an earlier one. Throws WorkError, or UsageError for an option, naming the place, the
/// label and what would be valid.
std::vector<Track> bindSettings(const std::vector<Setting>& settings, brisel::FrameSize frame,
                                FrameRate rate);

/// From key to key as they say for kinds that blend, held from key to key for the others; before
/// the first and after the last key their values hold.
ParamValue valueAt(const Track& track, double frame);

}  // namespace scene
