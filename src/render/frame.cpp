#include "render/frame.h"

#include "engine/numbers.h"
#include "render/star_fate.h"

namespace brisel {
namespace {

/// A plain white pixel, whatever the star's own looks.
void drawDot(Drawing& drawing, const Particle& star) {
  plotPixel(drawing.layer, BlendRule::Over, {255, 255, 255}, truncToInt(star.x), truncToInt(star.y),
            drawing.layer.fullScale());
}

}  // namespace

void drawAllStars(Drawing& drawing, Particle* stars, std::int32_t count) {
  const bool dots = drawing.settings.type == StarType::Dots;
  for (std::int32_t i = 0; i < count; ++i) {
    if (dots) {
      drawDot(drawing, stars[i]);
    } else {
      drawStarWithTermination(drawing, stars[i]);
    }
  }
}

}  // namespace brisel
