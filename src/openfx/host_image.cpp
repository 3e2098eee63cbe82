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

/// Whether `whole` is the full picture that `bounds` hold in a reduced size: some hosts reduce all
/// but it, and then it is not that of which the bounds are a part.
bool isUnscaled(const OfxRectI& whole, const OfxRectI& bounds, RenderScale scale) {
  const auto isNear = [](int side, double full, double factor) {
    return std::abs(side - full * factor) <= 1;  // whichever way it was rounded
  };
  return scale.x < 1 && scale.y < 1 && isNear(bounds.x1, whole.x1, scale.x) &&
         isNear(bounds.x2, whole.x2, scale.x) && isNear(bounds.y1, whole.y1, scale.y) &&
         isNear(bounds.y2, whole.y2, scale.y);
}

}  // namespace

std::ptrdiff_t PixelLayout::channelBytes() const {
  constexpr std::ptrdiff_t kBytes[] = {1, 2, 4};
  return kBytes[static_cast<int>(depth)];
}

std::ptrdiff_t PixelLayout::bytes() const {
  return channelBytes() * (hasAlpha ? 4 : 3);
}

HostImage::HostImage(const Host& host, OfxImageClipHandle clip, OfxTime time, RenderScale scale)
    : host_(host) {
  if (clip == nullptr) return;
  OfxPropertySetHandle handle = nullptr;
  if (host.effect->clipGetImage(clip, time, nullptr, &handle) != kOfxStatOK) return;
  handle_ = handle;
  if (handle_ == nullptr) return;
  try {
    fault_ = read(clip, scale);
  } catch (...) {
    host_.effect->clipReleaseImage(handle_);
    throw;
  }
}

HostImage::~HostImage() {
  if (handle_ != nullptr) host_.effect->clipReleaseImage(handle_);
}

/// Returns the fault, or an empty text.
std::string HostImage::read(OfxImageClipHandle clip, RenderScale scale) {
  const Properties image(host_, handle_);
  const auto bounds = image.rectangle(kOfxImageBounds);
  if (!bounds) return "does not tell its bounds";
  if (isEmpty(*bounds)) return "";
  if (!hasSize(*bounds)) return "is wider or higher than 32767 pixels: make it smaller";
  const std::string depthName = image.text(kOfxEffectPixelDepth);
  const auto depth = depthOf(depthName);
  if (!depth) {
    return "has the depth \"" + depthName +
           "\": convert it to 8 or 16 bits a channel, or to floats";
  }
  const std::string components = image.text(kOfxEffectComponents);
  const bool hasAlpha = components == kOfxImageComponentRGBA;
  if (!hasAlpha && components != kOfxImageComponentRGB) {
    return "has the channels \"" + components + "\": convert it to red, green, blue and alpha";
  }

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
  if (pixels.data == nullptr) return "has no pixels in memory";
  if (std::abs(pixels.rowBytes) < least) return "has rows shorter than their pixels";
  const auto address = reinterpret_cast<std::uintptr_t>(pixels.data);
  const std::ptrdiff_t channel = pixels.layout.channelBytes();
  if (address % static_cast<std::uintptr_t>(channel) != 0 || pixels.rowBytes % channel != 0) {
    return "has pixels at addresses that are no multiples of a channel's bytes";
  }

  const auto whole = image.rectangle(kOfxImageRegionOfDefinition);
  const bool isPart = whole && hasSize(*whole) && contains(*whole, *bounds);
  frame_ = isPart && !isUnscaled(*whole, *bounds, scale) ? *whole : *bounds;
  const std::string field = image.text(kOfxImageField);
  isField_ = field == kOfxImageFieldLower || field == kOfxImageFieldUpper;
  pixels_ = pixels;
  return "";
}

}  // namespace brisel::openfx
