// Runs of pixels from the host's layouts to the effect's and back.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/options.h"
#include "openfx/host_image.h"

namespace brisel::openfx {

/// Runs of `count` pixels that do not overlap. The effect's have alpha, red, green and blue of 8
/// bits, or of 16 for the host's Short and Float, and color that is not multiplied by alpha. What
/// has no alpha is opaque, and what the effect makes for it lies over black.

/// Light beyond full, and below none, is lost.
void readPixels(const std::uint8_t* from, const PixelLayout& layout, int count, std::uint8_t* to);
/// Of Byte and Short.
void writePixels(const std::uint8_t* from, int count, const PixelLayout& layout, std::uint8_t* to);

/// Between layouts of one depth that differ otherwise. `scratch` has room for the effect's pixels,
/// and for 16 bytes a pixel where the depth is Float.
void copyPixels(const std::uint8_t* from, const PixelLayout& layout, int count,
                const PixelLayout& toLayout, std::uint8_t* to, std::uint8_t* scratch);

/// Float without loss: red, green, blue, alpha, color not multiplied by alpha.
void readFloats(const std::uint8_t* from, const PixelLayout& layout, int count, float* to);
void writeFloats(const float* from, int count, const PixelLayout& layout, std::uint8_t* to);

enum class FloatMix : std::uint8_t {
  Replace,
  Normal,
  Add,
  Light  // where there may be nothing below: alphas add up, and color by them
};

/// Mixes the effect's stars of 16 bits over floats, as the effect mixes stars and clip, but for
/// what truncation does there and for light above full, which stays.
void mixFloats(const std::uint8_t* stars, int count, FloatMix mix, float* under);

}  // namespace brisel::openfx
