// Parameter values over time.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/keyframe.h"
#include "cli/scene/origin.h"
#include "cli/scene/param_values.h"
#include "hostkit/parameters.h"

namespace cli {

// One entry of [params], of [layer.params] or one --set, not yet checked against what the module
// declares.
struct Setting {
  using Key = KeyOf<UserValue>;
  std::string label;
  std::vector<Key> keys;  // one for a constant; else keyframes
  std::string place;
  Origin origin = Origin::kScene;
};

// A setting that the module's parameter can hold.
struct Track {
  using Key = KeyOf<ParamValue>;
  const hostkit::Parameter* parameter;
  Origin origin;
  std::vector<Key> keys;  // in order, times in frames
};

// Finds each setting's parameter and checks its values. A later setting of the same parameter
// replaces an earlier one. Times are frames. Throws WorkError, or UsageError for an option, naming
// the place, the label and what would be valid. The tracks refer to `parameters`.
std::vector<Track> bindSettings(const std::vector<Setting>& settings,
                                const hostkit::ParameterSet& parameters, FrameSize frame);

// From key to key as they say for kinds that blend, held from key to key for the others; before the
// first and after the last key their values hold.
ParamValue valueAt(const Track& track, double frame);

}  // namespace cli
