// The spiral texture of the textured cross star: two families of curved stripes, one winding each
// way, brightest where a stripe passes.
#pragma once

#include <cstdint>

namespace brisel {

class CrossTexture {
 public:
  explicit CrossTexture(float textureScale);

  /// The texture's brightness, 127.5 to 382.5, at normalised coordinates (nx, ny) and `distance`
  /// pixels from the centre.
  float at(float nx, float ny, float distance) const;

 private:
  float stripe(float spiral, float degrees) const;

  float textureScale_;
  float sector_;  // degrees between stripes
};

}  // namespace brisel
