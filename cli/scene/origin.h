// Who says what a parameter is to be.
#pragma once

namespace cli {

// Each wins over those before it: the scene for all of its layers, one layer, the command line.
enum class Origin { kScene, kLayer, kOption };

}  // namespace cli
