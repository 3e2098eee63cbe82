// The five rules by which a pen colour is blended into pixels.
#pragma once

#include <cstdint>

#include "core/color.h"
#include "core/image_view.h"

namespace brisel {

enum class BlendRule : std::uint8_t { Over, AddScaled, AddSolid, AddGlow, Lighten };

/// Blends `pen` into the pixel (x, y) with intensity `value`; does nothing outside the image, or
/// when `value` is not above 0.
void plotPixel(const MutableImageView& image, BlendRule rule, Rgb pen, std::int32_t x,
               std::int32_t y, float value);

}  // namespace brisel
