// One row of presets in the effect controls.
#pragma once

#include <cstdint>

namespace brisel {

/// The row's entries; a list without a preset file has none.
struct PresetList {
  std::int32_t count = 0;
};

}  // namespace brisel
