// What the module keeps from one command to the next, beside the instances' own sequence data.
// Hosts send commands one at a time; nothing here is locked.
#pragma once

#include "engine/random.h"
#include "host/module_folders.h"
#include "render/drawing.h"

namespace brisel {

struct ModuleState {
  ModuleFolders folders;  // filled at global set-up
  DrawingState drawing;   // shared by all instances, as one render leaves it to the next
};

ModuleState& moduleState();

/// The generator of the calling thread, shared by all instances rendered on it.
RandomGenerator& randomGenerator();

}  // namespace brisel
