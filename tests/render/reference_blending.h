// The blend rules and the final mix, pixel by pixel and channel by channel.
#pragma once

#include <cstdint>

#include "core/render_settings.h"
#include "render/blend.h"

namespace reference {

/// Blends one pixel of the frame into the output.
void plotPixel(const brisel::RenderSettings& settings, brisel::BlendRule rule, brisel::Rgb pen,
               std::int32_t x, std::int32_t y, float value);

void mixWithInput(const brisel::RenderSettings& settings, int mode);

}  // namespace reference
