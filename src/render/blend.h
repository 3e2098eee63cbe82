// The five rules by which a pen colour is blended into pixels, for runs of neighbouring pixels.
#pragma once

#include <cstdint>

#include "engine/render_settings.h"
#include "render/layer.h"

namespace brisel {

enum class BlendRule : std::uint8_t { Over, AddScaled, AddSolid, AddGlow, Lighten };

/// The longest run that is shaded and blended at once: long enough to hide the calls, short enough
/// to stay in the nearest cache.
inline constexpr std::int32_t kRunLength = 256;

/// A run of pixels on one row after shading. `value` is the intensity of each pixel, up to the
/// layer's full scale; a pixel whose value is not above 0 stays as it is. The pens, 0..255, are
/// read only when the sprite varies them. Shaders fill whole lanes, so a few elements behind the
/// run's end may be written.
struct ShadedRun {
  static constexpr std::int32_t kCapacity = kRunLength + 16;
  alignas(64) float value[kCapacity];
  alignas(64) std::int32_t red[kCapacity];
  alignas(64) std::int32_t green[kCapacity];
  alignas(64) std::int32_t blue[kCapacity];
};

/// Blends one pen into `count` pixels starting at `pixels`.
using BlendPen = void (*)(std::uint8_t* pixels, std::int32_t count, const ShadedRun& run, Rgb pen);

/// Blends each pixel with its own pen from the run.
using BlendPens = void (*)(std::uint8_t* pixels, std::int32_t count, const ShadedRun& run);

/// The kernels of one rule, depth and instruction set; chosen once per sprite.
struct BlendKernels {
  BlendPen withPen;
  BlendPens withPens;
};

/// Blends `pen` into the pixel (x, y) with intensity `value`; does nothing outside the layer, or
/// when `value` is not above 0.
void plotPixel(const Layer& layer, BlendRule rule, Rgb pen, std::int32_t x, std::int32_t y,
               float value);

}  // namespace brisel
