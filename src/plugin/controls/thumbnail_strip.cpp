#include "plugin/controls/thumbnail_strip.h"

#include <algorithm>
#include <new>

#include "plugin/resources/bitmap_resource.h"

namespace brisel {
namespace {

constexpr std::size_t kPixelBytes = 3;

struct Bgr {
  std::uint8_t blue;
  std::uint8_t green;
  std::uint8_t red;
};

constexpr Bgr kCellColor{255, 200, 100};
constexpr Bgr kHotCellColor{0, 0, 255};

class StripPainter {
 public:
  StripPainter(std::uint8_t* pixels, std::int32_t width)
      : pixels_(pixels), width_(width), rowBytes_(bitmapRowBytes(width)) {}

  /// Fills the columns left .. left + kCellWidth.
  void fillCell(std::int32_t left, const Bgr& color) {
    const std::int32_t begin = std::max(left, 0);
    const std::int32_t end = std::min(left + kCellWidth, width_);
    for (std::int32_t y = 0; y < kStripHeight; ++y) {
      for (std::int32_t x = begin; x < end; ++x) store(at(x, y), color);
    }
  }

  void copyThumbnail(const BmpImage& thumbnail, std::int32_t left, std::int32_t top) {
    const std::int32_t begin = std::max(0, -left);
    const std::int32_t end = std::min(thumbnail.width, width_ - left);
    const std::int32_t rows = std::min(thumbnail.height, kStripHeight - top);
    const std::size_t rowBytes = kPixelBytes * static_cast<std::size_t>(thumbnail.width);
    for (std::int32_t y = 0; y < rows; ++y) {
      const std::uint8_t* row = thumbnail.pixels.get() + static_cast<std::size_t>(y) * rowBytes;
      for (std::int32_t x = begin; x < end; ++x) {
        const std::uint8_t* rgb = row + static_cast<std::size_t>(x) * kPixelBytes;
        store(at(left + x, top + y), {rgb[2], rgb[1], rgb[0]});
      }
    }
  }

 private:
  std::uint8_t* at(std::int32_t x, std::int32_t y) const {
    return pixels_ + static_cast<std::size_t>(y) * rowBytes_ +
           static_cast<std::size_t>(x) * kPixelBytes;
  }
  static void store(std::uint8_t* to, const Bgr& color) {
    to[0] = color.blue;
    to[1] = color.green;
    to[2] = color.red;
  }

  std::uint8_t* pixels_;
  std::int32_t width_;
  std::size_t rowBytes_;
};

}  // namespace

ThumbnailStrip composeStrip(const PresetList& list) {
  if (list.stripWidth <= 0) return {};
  ThumbnailStrip strip;
  strip.bytes = bitmapRowBytes(list.stripWidth) * static_cast<std::size_t>(kStripHeight);
  strip.pixels.reset(new (std::nothrow) std::uint8_t[strip.bytes]());
  if (strip.pixels == nullptr) return {};
  StripPainter painter(strip.pixels.get(), list.stripWidth);
  const std::int32_t end = std::min(list.endVisible, list.count());
  std::int32_t x = list.pixelOffset;
  for (std::int32_t i = std::max(list.firstVisible, 0); i < end; ++i, x += kCellWidth) {
    const bool hot = i - list.firstVisible == list.hotCell;
    painter.fillCell(x, hot ? kHotCellColor : kCellColor);
    const BmpImage& thumbnail = list.items[static_cast<std::size_t>(i)].thumbnail;
    if (thumbnail.pixels != nullptr) painter.copyThumbnail(thumbnail, x + 3, hot ? 2 : 3);
  }
  return strip;
}

}  // namespace brisel
