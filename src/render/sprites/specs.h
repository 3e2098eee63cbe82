// The sprites that stars are made of, each as one record that says all there is to paint: plain
// data without a pointer, so that a sprite can be kept, copied and painted into any rows of a
// frame, on any thread. stars/ composes them, and painter.h paints them.
//
// Positions and sizes are pixels of the frame, y downward. Colors are 0..255 whatever the depth.
// `value` is the brightness, 1 being full. `rainbowShift` turns the hue with the distance from the
// center; 0 leaves the color as it is. Glow, blics and cross lie on a grid of as many steps on
// either axis.
#pragma once

#include <cmath>
#include <cstdint>
#include <type_traits>

#include "core/color.h"
#include "core/geometry.h"
#include "core/numbers.h"
#include "core/options.h"
#include "render/raster/blend_rule.h"
#include "render/raster/grid.h"

namespace brisel {

/// One white pixel.
struct DotSpec {
  std::int32_t x, y;
};

enum class GlowProfile : std::uint8_t { Simple = 2, Full = 4 };

/// A radial glow: a single fall-off from the center, or, in full, a core with a fringe of color.
struct GlowSpec {
  GlowProfile profile;
  BlendRule rule;
  std::int32_t radius;  // above 0
  PointF center;
  Rgb color;
  float value;
  float rainbowShift;
  float textureMix;  // how far the rainbow shift also grows evenly with the distance
  float glowScale;   // full profile: what exceeds 1 is the share of the radius that is white

  IndexRange steps() const { return {-radius, radius}; }
  StepMap rowMap() const { return {center.y}; }
  StepMap columnMap() const { return {center.x}; }
};

enum class BlicsProfile : std::uint8_t { Disc = 0, Ring = 4 };

/// A disc with a bright rim, or a ring.
struct BlicsSpec {
  BlicsProfile profile;
  BlendRule rule;
  std::int32_t radius;  // above 0
  PointF center;
  Rgb color;
  float value;  // above 0
  float rainbowShift;
  /// The share of the radius from the brightest circle to the edge; a ring's light reaches as far
  /// inward, too.
  float rim;  // above 0

  IndexRange steps() const { return {-radius, radius}; }
  StepMap rowMap() const { return {center.y}; }
  StepMap columnMap() const { return {center.x}; }
};

/// A four-pointed star with concave sides, plain or with a spiral texture.
struct CrossSpec {
  bool isTextured;
  BlendRule rule;
  float radius;    // above 0
  PointF center;   // less than 2^31 either way
  float cos, sin;  // of its angle, growing counterclockwise
  Rgb color;
  float value;  // above 0
  float rainbowShift;
  float textureScale;  // how fast the texture's stripes wind
  float textureMix;    // 0 to 1: share of the texture in the brightness, and in the rainbow

  IndexRange steps() const { return {0, truncToInt(std::ceil(2.0f * radius))}; }
  StepMap rowMap() const { return {center.y, radius}; }
  StepMap columnMap() const { return {center.x, radius}; }
};

/// A fan of polygonal rays around a center.
struct RaySpec {
  StarType type;  // Type1 to Type5
  BlendRule rule;
  bool isSmooth;      // edges fade over two pixels
  bool isRecolored;   // by `rainbowShift`, which may then be 0
  bool isDarkOnLeft;  // Type5, pointing down: the right side is bright, else the left one
  PointF center;
  float length;        // above 0
  float width;         // of a ray
  float angleDegrees;  // of the first ray, growing clockwise; 0 points it down
  float count;         // above 0; 2.5 gives three rays, 360 / 2.5 degrees apart
  Rgb color;
  float value;
  float rainbowShift;
};

static_assert(std::is_trivially_copyable_v<DotSpec> && std::is_trivially_copyable_v<GlowSpec> &&
              std::is_trivially_copyable_v<BlicsSpec> && std::is_trivially_copyable_v<CrossSpec> &&
              std::is_trivially_copyable_v<RaySpec>);

}  // namespace brisel
