// A point on an emitter, whatever its shape.
#pragma once

namespace brisel {

struct EmitterPoint {
  float x = 0.0f;  // pixels
  float y = 0.0f;
  float dirX = 0.0f;  // along the emitter: a unit vector, or (0, 0) where the shape has no extent
  float dirY = 0.0f;
  float tangentAngle = 0.0f;  // radians
};

}  // namespace brisel
