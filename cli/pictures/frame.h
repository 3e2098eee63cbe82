// One picture in memory, as files and pipes hold it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/geometry.h"
#include "hostkit/world.h"

namespace cli {

using brisel::FrameSize;
using hostkit::Depth;

// Interleaved red, green, blue, alpha, not premultiplied, top row first, rows without padding.
// Channels are bytes (0..255) or 16-bit integers of this machine's byte order (0..65535).
struct Frame {
  FrameSize size;
  Depth depth = Depth::Bits8;
  std::vector<std::uint8_t> bytes;

  Frame() = default;
  // Transparent black.
  Frame(FrameSize size, Depth depth)
      : size(size), depth(depth), bytes(rowBytes() * static_cast<std::size_t>(size.height)) {}

  std::size_t pixelBytes() const { return depth == Depth::Bits8 ? 4 : 8; }
  std::size_t rowBytes() const { return pixelBytes() * static_cast<std::size_t>(size.width); }
  const std::uint8_t* row(int y) const {
    return bytes.data() + rowBytes() * static_cast<std::size_t>(y);
  }
  std::uint8_t* row(int y) { return bytes.data() + rowBytes() * static_cast<std::size_t>(y); }
};

// The same picture in another depth, full scale to full scale.
Frame inDepth(const Frame& frame, Depth depth);

// The same picture as the host's world, whose 16-bit channels end at 32768, and which has the
// frame's size and depth.
void copyToWorld(const Frame& frame, hostkit::World& world);

// The other way round; the frame gets the world's size and depth.
void copyFromWorld(const hostkit::World& world, Frame& frame);

// Colors become those seen over black, and alpha full.
void flattenOnBlack(Frame& frame);

// The colors of a world of 8 bits as seen over black: its planes green, blue and red.
void flatPlanesOf(const hostkit::World& world, std::vector<std::uint8_t>& planes);

}  // namespace cli
