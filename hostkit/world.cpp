#include "hostkit/world.h"

#include <algorithm>
#include <limits>
#include <string>

#include "hostkit/error.h"
#include "plugin/sdk/codes.h"

namespace hostkit {

namespace {

std::size_t pixelSize(Depth depth) {
  return depth == Depth::Bits16 ? sizeof(PF_Pixel16) : sizeof(PF_Pixel);
}

A_long checkedRowBytes(A_long width, A_long height, Depth depth, const WorldLayout& layout) {
  const std::int64_t bytes =
      std::int64_t{width} * static_cast<std::int64_t>(pixelSize(depth)) + layout.rowPadding;
  if (width < 0 || height < 0 || layout.rowPadding < 0 || layout.guardBytes < 0 ||
      bytes > std::numeric_limits<A_long>::max()) {
    throw Error("no picture can be " + std::to_string(width) + " by " + std::to_string(height) +
                " pixels");
  }
  if (depth == Depth::Bits16 && (layout.rowPadding % 2 != 0 || layout.guardBytes % 2 != 0)) {
    throw Error("16-bit rows start at even bytes");
  }
  return static_cast<A_long>(bytes);
}

}  // namespace

World::World(A_long width, A_long height, Depth depth, WorldLayout layout)
    : width_(width),
      height_(height),
      depth_(depth),
      rowBytes_(checkedRowBytes(width, height, depth, layout)),
      guard_(static_cast<std::size_t>(layout.guardBytes)),
      memory_(static_cast<std::size_t>(rowBytes_) * static_cast<std::size_t>(height) + 2 * guard_,
              kGuardByte) {
  for (A_long y = 0; y < height_; ++y) {
    std::uint8_t* row = rowStart(y);
    const auto pixelBytes = rowPixelBytes(y).size();
    std::fill(row, row + pixelBytes, std::uint8_t{0});
    std::fill(row + pixelBytes, row + rowBytes_, kPaddingByte);
  }
  record_.world_flags = depth == Depth::Bits16 ? PF_WorldFlag_DEEP : 0;
  record_.data = reinterpret_cast<PF_Pixel*>(memory_.data() + guard_);
  record_.rowbytes = rowBytes_;
  record_.width = width_;
  record_.height = height_;
  record_.extent_hint = {0, 0, width_, height_};
  record_.pix_aspect_ratio = {1, 1};
}

std::span<PF_Pixel> World::row8(A_long y) {
  return {reinterpret_cast<PF_Pixel*>(rowStart(y)), static_cast<std::size_t>(width_)};
}

std::span<const PF_Pixel> World::row8(A_long y) const {
  return {reinterpret_cast<const PF_Pixel*>(rowStart(y)), static_cast<std::size_t>(width_)};
}

std::span<PF_Pixel16> World::row16(A_long y) {
  return {reinterpret_cast<PF_Pixel16*>(rowStart(y)), static_cast<std::size_t>(width_)};
}

std::span<const PF_Pixel16> World::row16(A_long y) const {
  return {reinterpret_cast<const PF_Pixel16*>(rowStart(y)), static_cast<std::size_t>(width_)};
}

std::span<std::uint8_t> World::bytes() {
  return std::span(memory_).subspan(guard_, memory_.size() - 2 * guard_);
}

std::span<const std::uint8_t> World::bytes() const {
  return std::span(memory_).subspan(guard_, memory_.size() - 2 * guard_);
}

std::span<const std::uint8_t> World::rowPixelBytes(A_long y) const {
  return {rowStart(y), static_cast<std::size_t>(width_) * pixelSize(depth_)};
}

void World::fill(std::uint8_t byte) {
  std::ranges::fill(bytes(), byte);
}

bool World::guardsIntact() const {
  const auto isGuard = [](std::uint8_t byte) { return byte == kGuardByte; };
  const std::span all(memory_);
  return std::ranges::all_of(all.first(guard_), isGuard) &&
         std::ranges::all_of(all.last(guard_), isGuard);
}

std::uint8_t* World::rowStart(A_long y) {
  return memory_.data() + guard_ +
         static_cast<std::size_t>(y) * static_cast<std::size_t>(rowBytes_);
}

const std::uint8_t* World::rowStart(A_long y) const {
  return memory_.data() + guard_ +
         static_cast<std::size_t>(y) * static_cast<std::size_t>(rowBytes_);
}

bool samePixels(const World& a, const World& b) {
  if (a.width() != b.width() || a.height() != b.height() || a.depth() != b.depth()) return false;
  for (A_long y = 0; y < a.height(); ++y) {
    if (!std::ranges::equal(a.rowPixelBytes(y), b.rowPixelBytes(y))) return false;
  }
  return true;
}

}  // namespace hostkit
