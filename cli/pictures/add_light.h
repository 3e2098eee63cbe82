// Light upon light where there may be nothing behind it.
#pragma once

#include "hostkit/world.h"

namespace cli {

// Adds the stars of `below` to those of `picture`, of the same size and depth: the colors by their
// alphas, and the alphas up to full. Over black the sum is as bright as the two together, whichever
// of them is below; over an opaque picture it is what the effect's "Add" makes, within rounding.
void addLight(hostkit::World& picture, const hostkit::World& below);

}  // namespace cli
