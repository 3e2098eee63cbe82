// What the module keeps from one command to the next, besides the instances' own sequence data.
// Hosts send commands one at a time; nothing here is locked.
#pragma once

#include <atomic>

#include "core/random.h"
#include "plugin/controls/header.h"
#include "plugin/controls/resource_image.h"
#include "plugin/drawing_state.h"
#include "plugin/module_folders.h"

namespace brisel {

struct ModuleState {
  ModuleFolders folders;    // filled at global set-up, as the texture
  GreyTexture greyTexture;  // for star types that sample one; no type does today
  HeaderState header;
  DrawingState drawing;  // shared by all instances that have none of their own
  std::atomic_flag drawingInUse;
};

ModuleState& moduleState();

/// The generator of the calling thread, shared by all instances rendered on it that have none of
/// their own.
RandomGenerator& randomGenerator();

}  // namespace brisel
