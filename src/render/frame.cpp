#include "render/frame.h"

#include <span>

#include "core/numbers.h"
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
  for (Particle& star : std::span(stars, static_cast<std::size_t>(count))) {
    if (star.lifeTime == kFailedPlacement) continue;
    if (dots) {
      drawDot(drawing, star);
    } else {
      drawStarWithTermination(drawing, star);
    }
  }
}

}  // namespace brisel
