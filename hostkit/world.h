// hostkit: a rectangle of pixels as the host hands it out, with guard bytes around it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "plugin/sdk/pixel.h"

namespace hostkit {

enum class Depth { Bits8 = 8, Bits16 = 16 };  // bits per channel; 16 has full scale 32768

struct WorldLayout {
  A_long rowPadding = 0;   // bytes after each row's pixels; even at 16 bits
  A_long guardBytes = 64;  // before the first and after the last row; even at 16 bits
};

// Owns its pixels, which start as zeros; row padding starts as kPaddingByte. Moving a world keeps
// its pixels in place.
class World {
 public:
  static constexpr std::uint8_t kPaddingByte = 0x5A;
  static constexpr std::uint8_t kGuardByte = 0xC3;

  // Width and height in pixels, 0 allowed. Throws Error for a negative size or an odd padding at
  // 16 bits.
  World(A_long width, A_long height, Depth depth, WorldLayout layout = {});
  World(World&&) = default;
  World& operator=(World&&) = default;

  // What the module is given; a test may spoil it.
  PF_EffectWorld& record() { return record_; }
  const PF_EffectWorld& record() const { return record_; }

  A_long width() const { return width_; }
  A_long height() const { return height_; }
  Depth depth() const { return depth_; }
  A_long rowBytes() const { return rowBytes_; }

  // The pixels of row y, 0 <= y < height. The one that fits the depth.
  std::span<PF_Pixel> row8(A_long y);
  std::span<const PF_Pixel> row8(A_long y) const;
  std::span<PF_Pixel16> row16(A_long y);
  std::span<const PF_Pixel16> row16(A_long y) const;

  // All rows with their padding, without the guards.
  std::span<std::uint8_t> bytes();
  std::span<const std::uint8_t> bytes() const;
  // The bytes of row y that are pixels, padding left out.
  std::span<const std::uint8_t> rowPixelBytes(A_long y) const;

  void fill(std::uint8_t byte);  // every pixel and padding byte
  bool guardsIntact() const;

 private:
  std::uint8_t* rowStart(A_long y);
  const std::uint8_t* rowStart(A_long y) const;

  A_long width_;
  A_long height_;
  Depth depth_;
  A_long rowBytes_;
  std::size_t guard_;
  std::vector<std::uint8_t> memory_;
  PF_EffectWorld record_{};
};

// Same size, depth and pixels, whatever the padding.
bool samePixels(const World& a, const World& b);

}  // namespace hostkit
