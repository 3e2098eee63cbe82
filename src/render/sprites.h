// The sprites that star bodies, halos and blinks are made of. Each draws into the drawing's layer
// under its current blend rule, within the frame only, at a cost proportional to the pixels it
// covers there. Positions and sizes are pixels of the layer, y downward; `value` is the brightness,
// 1 being full. Colours are 0..255 at either depth.
#pragma once

#include <cstdint>

#include "render/drawing.h"
#include "render/kernels.h"

namespace brisel {

/// A fan of `rays` polygonal rays of length `size`; `type` is Type1 to Type5, anything else draws
/// nothing. `angleDegrees` 0 points the first ray down. Reads rainbowOn and currentRandomFactor.
inline void drawRayStar(Drawing& drawing, StarType type, float x, float y, float size, float width,
                        float angleDegrees, float rays, Rgb color, float value) {
  drawing.kernels->rayStar(drawing, type, x, y, size, width, angleDegrees, rays, color, value);
}

/// A four-pointed star with concave sides. Reads crossVariant, textureScale and textureMix.
inline void drawCrossStar(Drawing& drawing, float radius, float x, float y, float angleRadians,
                          Rgb color, float value) {
  drawing.kernels->crossStar(drawing, radius, x, y, angleRadians, color, value);
}

enum class GlowProfile : std::uint8_t { Simple = 2, Full = 4 };

/// A radial glow of diameter `size`; the full profile has a white core and a colour fringe set by
/// glowScale.
inline void drawGlowStar(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                         GlowProfile profile) {
  drawing.kernels->glowStar(drawing, x, y, size, color, value, profile);
}

enum class BlicsProfile : std::uint8_t { Disc = 0, Ring = 4 };

/// A disc of diameter `size` with a bright rim, or a ring of `ringWidth` (a share of the radius).
/// Reads rainbowOn; the ring sets textureScale.
inline void drawBlicsStar(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                          BlicsProfile profile, float ringWidth) {
  drawing.kernels->blicsStar(drawing, x, y, size, color, value, profile, ringWidth);
}

}  // namespace brisel
