#include "desk/render/screen_image.h"

#include <cstring>

namespace desk {
namespace {

std::uint32_t fromDeep(std::uint16_t channel) {
  constexpr std::uint32_t kFull = 32768;
  return (channel * 255U + kFull / 2) / kFull;
}

QRgb premultiplied(std::uint32_t alpha, std::uint32_t red, std::uint32_t green,
                   std::uint32_t blue) {
  const auto times = [alpha](std::uint32_t channel) {
    const std::uint32_t product = channel * alpha + 128;
    return (product + (product >> 8)) >> 8;
  };
  return alpha << 24 | times(red) << 16 | times(green) << 8 | times(blue);
}

/// Returns all alphas, and-ed.
std::uint32_t convertRow(const std::uint8_t* bytes, int width, bool isDeep, std::uint32_t opaque,
                         QRgb* row) {
  std::uint32_t all = 255;
  for (int x = 0; x < width; ++x) {
    std::uint32_t argb[4];
    if (isDeep) {
      std::uint16_t deep[4];
      std::memcpy(deep, bytes + std::ptrdiff_t{8} * x, sizeof deep);
      for (int c = 0; c < 4; ++c) argb[c] = fromDeep(deep[c]);
    } else {
      for (int c = 0; c < 4; ++c) argb[c] = bytes[4 * x + c];
    }
    all &= argb[0];
    row[x] = premultiplied(argb[0], argb[1], argb[2], argb[3]) | opaque;
  }
  return all;
}

}  // namespace

QImage screenImage(const brisel::ImageView& frame, bool onBlack) {
  QImage image(frame.width, frame.height, QImage::Format_ARGB32_Premultiplied);
  const std::uint32_t opaque = onBlack ? 0xFF000000U : 0U;
  std::uint32_t all = 255;
  for (int y = 0; y < frame.height; ++y) {
    all &= convertRow(frame.bytes + frame.rowBytes * y, frame.width, frame.isDeep(), opaque,
                      reinterpret_cast<QRgb*>(image.scanLine(y)));
  }
  if (onBlack || all == 255) image.reinterpretAsFormat(QImage::Format_RGB32);
  return image;
}

}  // namespace desk
