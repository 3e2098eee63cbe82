// Halo and blink: the sprites a star carries beside its body.
#pragma once

#include <cstdint>

#include "render/drawing.h"

namespace brisel {

/// The star that elements are drawn for, as it stands before its oscillation and jitter.
struct ElementStar {
  float x, y;   // pixels
  float size;   // pixels
  float angle;  // degrees
  Rgb color;
  float value;
  std::int32_t seed;  // -131..131; gives the star its own colours, sizes and picks
};

/// Draws the halo, then the blink, as "Type of halo" and "Type of blink" say. Leaves the blend rule
/// and the drawing state as its sprites set them.
void drawAdditionalElements(Drawing& drawing, const ElementStar& star);

}  // namespace brisel
