// The library of presets that ships with the effect, built into the filter: it is one file.
#pragma once

#include "scene/preset_library.h"

namespace brisel {

const scene::PresetLibrary& builtInPresets();

}  // namespace brisel
