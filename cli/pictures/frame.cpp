#include "cli/pictures/frame.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

namespace cli {
namespace {

constexpr std::uint32_t kHostFull = 32768;

// The nearest of 0..32768 for one of 0..65535: half of it, and the odd ones lie above the middle.
A_u_short toHost(std::uint16_t channel) {
  return static_cast<A_u_short>((channel + 1u) / 2);
}

// The inverse: 65535/32768 is just below 2, so the upper half is one less than twice the value.
std::uint16_t toFile(A_u_short channel) {
  const std::uint32_t within = std::min<std::uint32_t>(channel, kHostFull);
  return static_cast<std::uint16_t>(2 * within - (within > kHostFull / 2 ? 1 : 0));
}

// Channels are copied rather than pointed at, since the bytes of a frame have no 16-bit type.
template <typename Channel>
void flatten(std::span<std::uint8_t> bytes) {
  constexpr std::uint32_t kFull = std::numeric_limits<Channel>::max();
  for (; !bytes.empty(); bytes = bytes.subspan(4 * sizeof(Channel))) {
    Channel rgba[4];
    std::memcpy(rgba, bytes.data(), sizeof rgba);
    for (int c = 0; c < 3; ++c) {
      rgba[c] = static_cast<Channel>((rgba[c] * std::uint32_t{rgba[3]} + kFull / 2) / kFull);
    }
    rgba[3] = kFull;
    std::memcpy(bytes.data(), rgba, sizeof rgba);
  }
}

// Channel by channel; `convert` may only depend on the value.
template <typename From, typename To, typename Convert>
void convertChannels(const Frame& from, Frame& to, Convert convert) {
  const std::size_t count = from.bytes.size() / sizeof(From);
  for (std::size_t i = 0; i < count; ++i) {
    From channel;
    std::memcpy(&channel, from.bytes.data() + i * sizeof channel, sizeof channel);
    const To converted = convert(channel);
    std::memcpy(to.bytes.data() + i * sizeof converted, &converted, sizeof converted);
  }
}

}  // namespace

Frame inDepth(const Frame& frame, Depth depth) {
  if (frame.depth == depth) return frame;
  Frame result(frame.size, depth);
  if (depth == Depth::Bits16) {
    convertChannels<std::uint8_t, std::uint16_t>(
        frame, result, [](std::uint32_t v) { return static_cast<std::uint16_t>(v * 257); });
  } else {
    convertChannels<std::uint16_t, std::uint8_t>(
        frame, result, [](std::uint32_t v) { return static_cast<std::uint8_t>((v + 128) / 257); });
  }
  return result;
}

void copyToWorld(const Frame& frame, hostkit::World& world) {
  for (int y = 0; y < frame.size.height; ++y) {
    const std::uint8_t* from = frame.row(y);
    if (frame.depth == Depth::Bits8) {
      for (PF_Pixel& pixel : world.row8(y)) {
        pixel = {from[3], from[0], from[1], from[2]};
        from += 4;
      }
    } else {
      for (PF_Pixel16& pixel : world.row16(y)) {
        std::uint16_t rgba[4];
        std::memcpy(rgba, from, sizeof rgba);
        pixel = {toHost(rgba[3]), toHost(rgba[0]), toHost(rgba[1]), toHost(rgba[2])};
        from += sizeof rgba;
      }
    }
  }
}

void copyFromWorld(const hostkit::World& world, Frame& frame) {
  frame.size = {world.width(), world.height()};
  frame.depth = world.depth();
  frame.bytes.resize(frame.rowBytes() * static_cast<std::size_t>(frame.size.height));
  for (int y = 0; y < frame.size.height; ++y) {
    std::uint8_t* to = frame.row(y);
    if (frame.depth == Depth::Bits8) {
      for (const PF_Pixel& pixel : world.row8(y)) {
        const std::uint8_t rgba[4] = {pixel.red, pixel.green, pixel.blue, pixel.alpha};
        std::memcpy(to, rgba, sizeof rgba);
        to += sizeof rgba;
      }
    } else {
      for (const PF_Pixel16& pixel : world.row16(y)) {
        const std::uint16_t rgba[4] = {toFile(pixel.red), toFile(pixel.green), toFile(pixel.blue),
                                       toFile(pixel.alpha)};
        std::memcpy(to, rgba, sizeof rgba);
        to += sizeof rgba;
      }
    }
  }
}

void flattenOnBlack(Frame& frame) {
  if (frame.depth == Depth::Bits8) {
    flatten<std::uint8_t>(frame.bytes);
  } else {
    flatten<std::uint16_t>(frame.bytes);
  }
}

void flatPlanesOf(const hostkit::World& world, std::vector<std::uint8_t>& planes) {
  const auto width = static_cast<std::size_t>(world.width());
  const std::size_t plane = width * static_cast<std::size_t>(world.height());
  planes.resize(3 * plane);
  const auto overBlack = [](std::uint16_t channel, std::uint16_t alpha) {
    return static_cast<std::uint8_t>(static_cast<std::uint16_t>(channel * alpha + 127) / 255);
  };
  std::uint8_t* green = planes.data();
  for (int y = 0; y < world.height(); ++y, green += width) {
    const PF_Pixel* pixels = world.row8(y).data();
    std::uint8_t* blue = green + plane;
    std::uint8_t* red = blue + plane;
    for (std::size_t x = 0; x < width; ++x) {
      green[x] = overBlack(pixels[x].green, pixels[x].alpha);
      blue[x] = overBlack(pixels[x].blue, pixels[x].alpha);
      red[x] = overBlack(pixels[x].red, pixels[x].alpha);
    }
  }
}

}  // namespace cli
