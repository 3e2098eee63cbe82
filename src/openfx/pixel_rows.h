// Runs of pixels from the host's layouts to the effect's and back.
#pragma once

#include <cstdint>

#include "openfx/host_image.h"

namespace brisel::openfx {

enum class FloatMix : std::uint8_t {
  Replace,
  Normal,
  Add,
  Light  // where there may be nothing below: alphas add up, and color by them
};

/// Functions upon runs of `count` pixels of one depth, once per instruction set. All sets give the
/// same bytes. The effect's pixels have alpha, red, green and blue of 8 bits, or of 16 for the
/// host's Short and Float, and color that is not multiplied by alpha. What has no alpha is opaque,
/// and what the effect makes for it lies over black. Runs do not overlap unless said otherwise.
struct PixelRows {
  const char* instructions;

  /// Light beyond full, and below none, is lost.
  void (*read)(const std::uint8_t* from, const PixelLayout& layout, int count, std::uint8_t* to);
  /// `to` may be `from` where pixels are as large.
  void (*write)(const std::uint8_t* from, int count, const PixelLayout& layout, std::uint8_t* to);

  /// Between layouts of the depth that differ. Floats lose nothing.
  void (*convert)(const std::uint8_t* from, const PixelLayout& layout, int count,
                  const PixelLayout& toLayout, std::uint8_t* to);

  /// Mixes the effect's stars over what lies under them, none where that is null, in any mode but
  /// Replace: bytes and shorts as the effect does, floats as floats, so that light above full
  /// stays, and what truncation does there is left out. Pixels without a star become what lies
  /// under, to the bit where layouts are the same. `output` may be `stars` or `under` where pixels
  /// are as large.
  void (*mix)(const std::uint8_t* stars, const std::uint8_t* under, const PixelLayout& layout,
              int count, FloatMix mix, const PixelLayout& toLayout, std::uint8_t* output);
};

/// Those of an instruction set that this processor has, as kernels name it.
const PixelRows& pixelRows(const char* instructions, Depth depth);

/// Each by depth, in a file of its own, which is compiled for its instruction set.
extern const PixelRows kPlainRows[3];
extern const PixelRows kSse2Rows[3];
extern const PixelRows kAvx2Rows[3];
extern const PixelRows kAvx512Rows[3];
extern const PixelRows kNeonRows[3];

}  // namespace brisel::openfx
