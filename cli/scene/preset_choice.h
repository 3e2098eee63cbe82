// Choosing a preset as a person does: by a click on its thumbnail in the effect controls.
#pragma once

#include <string>
#include <vector>

#include "cli/scene/origin.h"
#include "cli/scene/preset_index.h"
#include "hostkit/session.h"

namespace cli {

// One name of a scene's presets, or of a --preset.
struct PresetChoice {
  std::string name;
  std::string place;  // where it was written, for messages: "fire.toml:12"
  Origin origin = Origin::kScene;
};

// Throws WorkError, or UsageError for an option, naming the nearest preset when there is none of
// that name.
const Preset& findPreset(const PresetIndex& index, const PresetChoice& choice);

// Gives the parameters the preset's values and returns which parameters the preset sets. The
// session's layer size must be known. Throws WorkError when the module does not take the preset.
std::vector<PF_ParamIndex> applyPreset(hostkit::Session& session, const PresetIndex& index,
                                       const Preset& preset);

}  // namespace cli
