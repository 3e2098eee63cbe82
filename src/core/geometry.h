// Points of the frame.
#pragma once

namespace brisel {

/// Pixels of the output frame, x to the right and y downward, unless said otherwise.
struct PointF {
  float x = 0.0f;
  float y = 0.0f;
};

}  // namespace brisel
