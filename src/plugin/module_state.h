// What the module keeps from one command to the next, besides the instances' own sequence data.
// Hosts send commands one at a time; nothing here is locked.
#pragma once

#include "core/random.h"
#include "plugin/controls/header.h"
#include "plugin/controls/parameter_file.h"
#include "plugin/controls/resource_image.h"
#include "plugin/module_folders.h"
#include "render/painter.h"
#include "render/stars/compose.h"

namespace brisel {

struct ModuleState {
  ModuleFolders folders;    // filled at global set-up, as the texture
  GreyTexture greyTexture;  // for star types that sample one; no type does today
  SpriteState sprites;      // shared by all instances, as one render leaves it to the next
  FrameSize frameSize;      // of the last render; a preset's points are fractions of it
  HeaderState header;
  Painter painter;  // on the host's thread; its kernels are chosen at global set-up
};

ModuleState& moduleState();

/// The generator of the calling thread, shared by all instances rendered on it.
RandomGenerator& randomGenerator();

}  // namespace brisel
