// The blend rules and the final mix, pixel by pixel and channel by channel.
#pragma once

#include <cstdint>

#include "core/image_view.h"
#include "render/raster/blend_rule.h"

namespace reference {

/// Blends one pixel of the frame of the image.
void plotPixel(const brisel::MutableImageView& image, brisel::BlendRule rule, brisel::Rgb pen,
               std::int32_t x, std::int32_t y, float value);

void mixWithInput(const brisel::MutableImageView& stars, const brisel::ImageView& input, int mode);

}  // namespace reference
