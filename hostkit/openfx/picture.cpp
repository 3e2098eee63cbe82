#include "hostkit/openfx/picture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace hostkit {
namespace {

constexpr std::uint8_t kUntouched = 0xA5;
constexpr std::ptrdiff_t kPadding = 48;  // bytes after each row, and around all

}  // namespace

OpenFxPicture::OpenFxPicture(PictureKind kind, OfxRectI bounds, bool rowsGoDown)
    : kind_(std::move(kind)), bounds_(bounds) {
  const auto pixelBytes = static_cast<std::ptrdiff_t>(channels() * channelBytes());
  const std::ptrdiff_t row = pixelBytes * (bounds.x2 - bounds.x1) + kPadding;
  rowBytes_ = rowsGoDown ? -row : row;
  bytes_.assign(static_cast<std::size_t>(row * (bounds.y2 - bounds.y1) + kPadding), kUntouched);
}

std::size_t OpenFxPicture::channels() const {
  return kind_.components == kOfxImageComponentRGBA ? 4 : 3;
}

std::size_t OpenFxPicture::channelBytes() const {
  if (kind_.depth == kOfxBitDepthByte) return 1;
  return kind_.depth == kOfxBitDepthShort ? 2 : 4;
}

std::ptrdiff_t OpenFxPicture::offset(int x, int y) const {
  const int row = rowBytes_ < 0 ? bounds_.y2 - 1 - y : y - bounds_.y1;
  return kPadding + std::abs(rowBytes_) * row +
         static_cast<std::ptrdiff_t>(channels() * channelBytes()) * (x - bounds_.x1);
}

double OpenFxPicture::channel(int x, int y, std::size_t channel) const {
  const std::uint8_t* bytes = at(x, y) + channel * channelBytes();
  if (kind_.depth == kOfxBitDepthByte) return *bytes / 255.0;
  if (kind_.depth == kOfxBitDepthShort) {
    std::uint16_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value / 65535.0;
  }
  float value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

void OpenFxPicture::setChannel(int x, int y, std::size_t channel, double value) {
  std::uint8_t* bytes = bytes_.data() + offset(x, y) + channel * channelBytes();
  if (kind_.depth == kOfxBitDepthByte) {
    *bytes = static_cast<std::uint8_t>(std::lround(value * 255));
  } else if (kind_.depth == kOfxBitDepthShort) {
    const auto whole = static_cast<std::uint16_t>(std::lround(value * 65535));
    std::memcpy(bytes, &whole, sizeof whole);
  } else {
    const auto single = static_cast<float>(value);
    std::memcpy(bytes, &single, sizeof single);
  }
}

bool OpenFxPicture::isUntouchedOutside(const OfxRectI& window) const {
  std::vector<bool> mayBeWritten(bytes_.size());
  const int x1 = std::max(window.x1, bounds_.x1), x2 = std::min(window.x2, bounds_.x2);
  const int y1 = std::max(window.y1, bounds_.y1), y2 = std::min(window.y2, bounds_.y2);
  const auto pixelBytes = static_cast<std::ptrdiff_t>(channels() * channelBytes());
  for (int y = y1; x1 < x2 && y < y2; ++y) {
    const auto begin = mayBeWritten.begin() + offset(x1, y);
    std::fill(begin, begin + pixelBytes * (x2 - x1), true);
  }
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (!mayBeWritten[i] && bytes_[i] != kUntouched) return false;
  }
  return true;
}

std::unique_ptr<OfxPropertySetStruct> OpenFxPicture::image(OfxImageClipStruct& clip,
                                                           const OfxRectI& frame) const {
  auto set = std::make_unique<OfxPropertySetStruct>(*clip.properties.host,
                                                    "image of " + clip.properties.name);
  // Which is how a source is handed over, too: whoever may not write it does not.
  void* data = const_cast<std::uint8_t*>(at(bounds_.x1, bounds_.y1));
  set->has(kOfxImageData, {data});
  set->has(kOfxImageBounds, {bounds_.x1, bounds_.y1, bounds_.x2, bounds_.y2});
  set->has(kOfxImageRegionOfDefinition, {frame.x1, frame.y1, frame.x2, frame.y2});
  set->has(kOfxImageRowBytes,
           {kind_.toldRowBytes != 0 ? kind_.toldRowBytes : static_cast<int>(rowBytes_)});
  set->has(kOfxEffectPixelDepth, {kind_.depth});
  set->has(kOfxEffectComponents, {kind_.components});
  set->has(kOfxEffectPreMultiplication, {kind_.alpha});
  set->has(kOfxImageField, {std::string("OfxFieldNone")});
  return set;
}

}  // namespace hostkit
