#include "presets/bmp_file.h"

#include <limits>
#include <new>

#include "platform/whole_file.h"

namespace brisel {
namespace {

using Bytes = std::span<const std::uint8_t>;

struct Header {
  std::uint64_t pixelOffset;
  std::int32_t width;
  std::int32_t height;
  std::uint32_t bitCount;
};

std::uint32_t littleEndian(Bytes file, std::size_t offset, std::size_t bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = bytes; i-- > 0;) value = value << 8 | file[offset + i];
  return value;
}

Header readHeader(Bytes file) {
  return {littleEndian(file, 10, 4), static_cast<std::int32_t>(littleEndian(file, 18, 4)),
          static_cast<std::int32_t>(littleEndian(file, 22, 4)), littleEndian(file, 28, 2)};
}

/// Whether `file` holds every row that its header promises. The last row's padding may be missing.
bool holdsAllRows(Bytes file, const Header& header, std::uint64_t rowBytes, std::uint64_t padding) {
  const std::uint64_t rows = static_cast<std::uint32_t>(header.height);
  if (header.pixelOffset > file.size()) return false;
  const std::uint64_t held = file.size() - header.pixelOffset + padding;
  return held / (rowBytes + padding) >= rows;
}

BmpImage allocateImage(const Header& header) {
  BmpImage image;
  const std::size_t bytes =
      3 * static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.height);
  image.pixels.reset(new (std::nothrow) std::uint8_t[bytes]);
  if (image.pixels == nullptr) return {};
  image.width = header.width;
  image.height = header.height;
  return image;
}

void storePixel(std::uint8_t* to, const std::uint8_t* blueGreenRed) {
  to[0] = blueGreenRed[2];
  to[1] = blueGreenRed[1];
  to[2] = blueGreenRed[0];
}

/// `bgrOf(rowStart, x)` points at the blue, green and red of a row's pixel.
template <class BgrOf>
BmpImage readRows(Bytes file, const Header& header, std::uint64_t rowBytes, std::uint64_t padding,
                  BgrOf bgrOf) {
  if (!holdsAllRows(file, header, rowBytes, padding)) return {};
  BmpImage image = allocateImage(header);
  if (image.pixels == nullptr) return {};
  std::uint8_t* to = image.pixels.get();
  for (std::int32_t y = header.height; y-- > 0;) {
    const std::uint8_t* row =
        file.data() + header.pixelOffset + static_cast<std::uint64_t>(y) * (rowBytes + padding);
    for (std::int32_t x = 0; x < header.width; ++x, to += 3) storePixel(to, bgrOf(row, x));
  }
  return image;
}

BmpImage readTrueColor(Bytes file, const Header& header) {
  const auto width = static_cast<std::uint64_t>(header.width);
  return readRows(file, header, width * 3, width % 4,
                  [](const std::uint8_t* row, std::int32_t x) { return row + 3 * std::size_t(x); });
}

BmpImage readPalette(Bytes file, const Header& header) {
  constexpr std::size_t kPaletteOffset = 54;
  constexpr std::size_t kPaletteBytes = 256 * 4;
  if (file.size() < kPaletteOffset + kPaletteBytes) return {};
  const std::uint8_t* palette = file.data() + kPaletteOffset;
  const auto width = static_cast<std::uint64_t>(header.width);
  return readRows(file, header, width, (4 - width % 4) % 4,
                  [palette](const std::uint8_t* row, std::int32_t x) {
                    return palette + 4 * std::size_t{row[x]};
                  });
}

}  // namespace

BmpImage parseBmpFile(std::span<const std::uint8_t> file) {
  constexpr std::size_t kHeaderBytes = 30;  // up to and including the bit count
  constexpr std::int32_t kWidest = std::numeric_limits<std::int32_t>::max() / 3;
  if (file.size() < kHeaderBytes) return {};
  const Header header = readHeader(file);
  if (header.width <= 0 || header.width > kWidest || header.height <= 0) return {};
  switch (header.bitCount) {
    case 24:
      return readTrueColor(file, header);
    case 8:
      return readPalette(file, header);
    default:
      return {};
  }
}

BmpImage LoadBmpFile(const char* path) {
  const auto content = readWholeFile(path);
  if (!content) return {};
  return parseBmpFile(content->bytes());
}

}  // namespace brisel
