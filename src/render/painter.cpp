#include "render/painter.h"

#include <cmath>

#include "core/numbers.h"

namespace brisel {

void Painter::paint(const DotSpec& dot) {
  if (!image_.contains(dot.x, dot.y)) return;
  float values[kMostLanes] = {image_.fullScale()};
  kernels_.run(image_, {BlendRule::Over, {255, 255, 255}, dot.x, dot.y, 1, values});
}

void Painter::paint(const GlowSpec& glow) {
  grid_.place(image_, {-glow.radius, glow.radius}, {glow.center.y}, {glow.center.x});
  if (!grid_.empty()) kernels_.glow(image_, grid_, glow);
}

void Painter::paint(const BlicsSpec& blics) {
  grid_.place(image_, {-blics.radius, blics.radius}, {blics.center.y}, {blics.center.x});
  if (!grid_.empty()) kernels_.blics(image_, grid_, blics);
}

void Painter::paint(const CrossSpec& cross) {
  const IndexRange steps{0, truncToInt(std::ceil(2.0f * cross.radius))};
  grid_.place(image_, steps, {cross.center.y, cross.radius}, {cross.center.x, cross.radius});
  if (!grid_.empty()) kernels_.cross(image_, grid_, cross);
}

void Painter::paint(const RaySpec& rays) {
  kernels_.rays(image_, rays);
}

}  // namespace brisel
