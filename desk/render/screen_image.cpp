#include "desk/render/screen_image.h"

#include <QtEndian>
#include <cstring>

namespace desk {
namespace {

std::uint32_t fromDeep(std::uint16_t channel) {
  constexpr std::uint32_t kFull = 32768;
  return (channel * 255U + kFull / 2) / kFull;
}

QRgb deep(const std::uint8_t* pixel) {
  std::uint16_t channels[4];
  std::memcpy(channels, pixel, sizeof channels);
  return fromDeep(channels[0]) << 24 | fromDeep(channels[1]) << 16 | fromDeep(channels[2]) << 8 |
         fromDeep(channels[3]);
}

}  // namespace

QImage screenImage(const brisel::ImageView& frame, bool onBlack) {
  QImage image(frame.width, frame.height, QImage::Format_ARGB32);
  QRgb all = 0xFF000000U;
  for (int y = 0; y < frame.height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    const std::uint8_t* bytes = frame.bytes + frame.rowBytes * y;
    if (frame.isDeep()) {
      for (int x = 0; x < frame.width; ++x) all &= row[x] = deep(bytes + std::ptrdiff_t{8} * x);
    } else {
      qFromBigEndian<QRgb>(bytes, frame.width, row);  // the bytes are in the order of channels
      for (int x = 0; x < frame.width; ++x) all &= row[x];
    }
  }
  if (all >> 24 == 255) {
    image.reinterpretAsFormat(QImage::Format_RGB32);
    return image;
  }
  image.convertTo(QImage::Format_ARGB32_Premultiplied);
  if (!onBlack) return image;
  for (int y = 0; y < image.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) row[x] |= 0xFF000000U;
  }
  image.reinterpretAsFormat(QImage::Format_RGB32);
  return image;
}

}  // namespace desk
