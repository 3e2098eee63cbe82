// Colors as settings and stars hold them.
#pragma once

#include <cstdint>

namespace brisel {

/// A color on the 8-bit scale, 0..255, whatever the depth of the image it is painted into.
struct Rgb {
  std::int32_t red = 0;
  std::int32_t green = 0;
  std::int32_t blue = 0;
};

}  // namespace brisel
