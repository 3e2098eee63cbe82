#include "render/blend.h"

#include <algorithm>

#include "render/blend_kernels.h"
#include "render/isa/plain.h"

namespace brisel {

void plotPixel(const Layer& layer, BlendRule rule, Rgb pen, std::int32_t x, std::int32_t y,
               float value) {
  if (x < 0 || y < 0 || x >= layer.width || y >= layer.height) return;
  const float clamped = std::min(value, layer.fullScale());
  plotValues<Plain>(layer, rule, pen, x, y, 1, &clamped);
}

}  // namespace brisel
