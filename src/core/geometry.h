// Points and sizes.
#pragma once

#include <cstdint>

namespace brisel {

/// Pixels of the output frame, x to the right and y downward, unless said otherwise.
struct PointF {
  float x = 0.0f;
  float y = 0.0f;
};

/// Pixels.
struct FrameSize {
  std::int32_t width = 0;
  std::int32_t height = 0;

  friend bool operator==(const FrameSize&, const FrameSize&) = default;
};

}  // namespace brisel
