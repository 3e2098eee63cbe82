#include "frei0r/channel_order.h"

#include <bit>

namespace brisel {
namespace {

static_assert(std::endian::native == std::endian::little ||
              std::endian::native == std::endian::big);

/// Turns each pixel by a byte, the last one in memory becoming the first or the other way round.
template <int kBits>
void turn(const std::uint32_t* from, std::uint32_t* to, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) to[i] = std::rotl(from[i], kBits);
}

constexpr int kLastToFirst = std::endian::native == std::endian::little ? 8 : 24;

}  // namespace

void rgbaToArgb(const std::uint32_t* from, std::uint32_t* to, std::size_t count) {
  turn<kLastToFirst>(from, to, count);
}

void argbToRgba(const std::uint32_t* from, std::uint32_t* to, std::size_t count) {
  turn<32 - kLastToFirst>(from, to, count);
}

}  // namespace brisel
