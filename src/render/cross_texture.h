// The spiral texture of the textured cross star: two families of curved stripes, one winding each
// way, brightest where a stripe passes.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/numbers.h"
#include "render/arc_tangent_lanes.h"
#include "render/drawing.h"
#include "render/simd.h"

namespace brisel {

class CrossTexture {
 public:
  explicit CrossTexture(float textureScale) : textureScale_(textureScale) {
    const std::int32_t wholeDegrees = 360 / std::max(50, truncToInt(200.0f * textureScale));
    sector_ = static_cast<float>(wholeDegrees);
  }

  /// The texture's brightness, 127.5 to 382.5, at normalised coordinates (nx, ny) and `distance`
  /// pixels from the centre.
  template <class Isa>
  typename Lanes<Isa>::Float at(typename Lanes<Isa>::Float nx, typename Lanes<Isa>::Float ny,
                                typename Lanes<Isa>::Float distance) const {
    using L = Lanes<Isa>;
    using Float = typename L::Float;
    Float angle = distance == 0.0f ? Float{} : arcTangents<Isa>(ny, nx);
    angle = angle < 0.0f ? angle + 2.0f * kPi : angle;
    const Float degrees = withinSector<Isa>(angle * 180.0f / kDrawingPi);
    Float w =
        L::minimum(stripe<Isa>(distance / 2.0f, degrees), stripe<Isa>(-distance / 2.0f, degrees));
    w = distance > 0.0f ? w * distance : w;
    return 25.5f * (5.0f + L::maximum(10.0f - w, Float{}));
  }

 private:
  template <class Isa>
  typename Lanes<Isa>::Float withinSector(typename Lanes<Isa>::Float a) const {
    const auto turns = a / sector_;
    constexpr float kWhole = 8388608.0f;  // from here on, there is nothing to truncate
    const auto whole = Lanes<Isa>::absolute(turns) < kWhole;
    return a - sector_ * (whole ? Lanes<Isa>::truncated(turns) : turns);
  }

  /// How far an angle within the sector is from the stripe that has wound by `spiral`.
  template <class Isa>
  typename Lanes<Isa>::Float stripe(typename Lanes<Isa>::Float spiral,
                                    typename Lanes<Isa>::Float angle) const {
    using Float = typename Lanes<Isa>::Float;
    Float wound = spiral * textureScale_;
    wound = withinSector<Isa>(wound < 0.0f ? wound + 360.0f : wound);
    const float half = sector_ / 2.0f;
    const auto angleAhead = (wound < half) & (half < angle);
    const auto stripeAhead = (angle < half) & (half < wound);
    const Float from = angleAhead ? angle - sector_ : angle;
    const Float to = stripeAhead ? wound - sector_ : wound;
    return 0.1f * Lanes<Isa>::absolute(to - from);
  }

  float textureScale_;
  float sector_;  // degrees between stripes
};

}  // namespace brisel
