#include "render/blend.h"

#include <algorithm>

#include "render/blend_kernels.h"
#include "render/isa/plain.h"

namespace brisel {

void plotPixel(const MutableImageView& image, BlendRule rule, Rgb pen, std::int32_t x,
               std::int32_t y, float value) {
  if (!image.contains(x, y)) return;
  const float clamped = std::min(value, image.fullScale());
  plotValues<Plain>(image, rule, pen, x, y, 1, &clamped);
}

}  // namespace brisel
