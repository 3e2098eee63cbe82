#include "openfx/host_image.h"

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

namespace brisel::openfx {
namespace {

std::optional<Depth> depthOf(const std::string& depth) {
  if (depth == kOfxBitDepthByte) return Depth::Byte;
  if (depth == kOfxBitDepthShort) return Depth::Short;
  if (depth == kOfxBitDepthFloat) return Depth::Float;
  return std::nullopt;
}

/// Whether a frame of the effect may be as large.
bool hasSize(const OfxRectI& r) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int16_t>::max();  // of a 16.16 point
  return !isEmpty(r) && std::int64_t{r.x2} - r.x1 <= kMost && std::int64_t{r.y2} - r.y1 <= kMost;
}

bool contains(const OfxRectI& a, const OfxRectI& b) {
  return a.x1 <= b.x1 && a.y1 <= b.y1 && a.x2 >= b.x2 && a.y2 >= b.y2;
}

}  // namespace

std::ptrdiff_t PixelLayout::channelBytes() const {
  constexpr std::ptrdiff_t kBytes[] = {1, 2, 4};
  return kBytes[static_cast<int>(depth)];
}

std::ptrdiff_t PixelLayout::bytes() const {
  return channelBytes() * (hasAlpha ? 4 : 3);
}

HostImage::HostImage(const Host& host, OfxImageClipHandle clip, OfxTime time) : host_(host) {
  if (clip == nullptr) return;
  OfxPropertySetHandle handle = nullptr;
  if (host.effect->clipGetImage(clip, time, nullptr, &handle) != kOfxStatOK) return;
  handle_ = handle;
  if (handle_ == nullptr) return;
  try {
    read(clip);
  } catch (...) {
    host_.effect->clipReleaseImage(handle_);
    throw;
  }
}

HostImage::~HostImage() {
  if (handle_ != nullptr) host_.effect->clipReleaseImage(handle_);
}

void HostImage::read(OfxImageClipHandle clip) {
  const Properties image(host_, handle_);
  const auto depth = depthOf(image.text(kOfxEffectPixelDepth));
  const std::string components = image.text(kOfxEffectComponents);
  const auto bounds = image.rectangle(kOfxImageBounds);
  const bool hasAlpha = components == kOfxImageComponentRGBA;
  if (!depth || (!hasAlpha && components != kOfxImageComponentRGB)) return;
  if (!bounds || !hasSize(*bounds)) return;

  HostPixels pixels;
  pixels.data = static_cast<std::uint8_t*>(image.pointer(kOfxImageData));
  pixels.bounds = *bounds;
  pixels.rowBytes = image.integer(kOfxImageRowBytes, 0);
  pixels.layout.depth = *depth;
  pixels.layout.hasAlpha = hasAlpha;
  std::string alpha = image.text(kOfxEffectPreMultiplication);
  if (alpha.empty()) alpha = propertiesOf(host_, clip).text(kOfxEffectPreMultiplication);
  pixels.layout.isPremultiplied = hasAlpha && alpha == kOfxImagePreMultiplied;
  const std::ptrdiff_t least = pixels.layout.bytes() * (bounds->x2 - bounds->x1);
  if (pixels.data == nullptr || std::abs(pixels.rowBytes) < least) return;
  const auto address = reinterpret_cast<std::uintptr_t>(pixels.data);
  const std::ptrdiff_t channel = pixels.layout.channelBytes();
  if (address % static_cast<std::uintptr_t>(channel) != 0 || pixels.rowBytes % channel != 0) return;

  const auto whole = image.rectangle(kOfxImageRegionOfDefinition);
  frame_ = whole && hasSize(*whole) && contains(*whole, *bounds) ? *whole : *bounds;
  const std::string field = image.text(kOfxImageField);
  isField_ = field == kOfxImageFieldLower || field == kOfxImageFieldUpper;
  pixels_ = pixels;
}

}  // namespace brisel::openfx
