// Parameter values over time.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/param_values.h"
#include "hostkit/parameters.h"

namespace cli {

// One entry of [params] or one --set, not yet checked against what the module declares.
struct Setting {
  struct Key {
    double frame;
    UserValue value;
    std::string place;  // where it was written, for messages: "fire.toml:12"
  };
  std::string label;
  std::vector<Key> keys;  // one for a constant; else in order of their frames
  std::string place;
  bool isOption = false;  // from the command line
};

// A setting that the module's parameter can hold.
struct Track {
  struct Key {
    double frame;
    ParamValue value;
  };
  const hostkit::Parameter* parameter;
  bool isOption;  // from the command line
  std::vector<Key> keys;
};

// Finds each setting's parameter and checks its values. A later setting of the same parameter
// replaces an earlier one. Throws WorkError, or UsageError for an option, naming the place, the
// label and what would be valid. The tracks refer to `parameters`.
std::vector<Track> bindSettings(const std::vector<Setting>& settings,
                                const hostkit::ParameterSet& parameters, FrameSize frame);

// Straight from key to key for kinds that blend, held from key to key for the others; before the
// first and after the last key their values hold.
ParamValue valueAt(const Track& track, double frame);

}  // namespace cli
