// Emitters that this version of the effect offers but does not feed yet.
#pragma once

#include <string>
#include <vector>

#include "animation.h"

namespace cli {

// One sentence for each emitter chosen at some frame that will emit nothing.
std::vector<std::string> silentEmitterWarnings(const std::vector<Track>& tracks);

}  // namespace cli
