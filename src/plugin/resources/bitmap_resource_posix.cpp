#include "plugin/resources/bitmap_resource.h"

#include <cstring>

#include "plugin/resources/bitmaps.h"

namespace brisel {
namespace {

constexpr std::size_t kHeaderBytes = 54;

std::int32_t field(std::span<const unsigned char> file, std::size_t offset) {
  std::int32_t value = 0;  // the file is little-endian, and so are the systems this is built for
  std::memcpy(&value, file.data() + offset, sizeof value);
  return value;
}

}  // namespace

bool readBitmapResource(int identifier, int width, int height, std::uint8_t* rows) {
  const auto file = embeddedBitmap(identifier);
  if (file.empty() || field(file, 18) != width || field(file, 22) != height) return false;
  const auto pixels = file.subspan(kHeaderBytes);
  if (pixels.size() < bitmapRowBytes(width) * static_cast<std::size_t>(height)) return false;
  std::memcpy(rows, pixels.data(), bitmapRowBytes(width) * static_cast<std::size_t>(height));
  return true;
}

}  // namespace brisel
