// One image of the host's: where its pixels lie, and what they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "core/geometry.h"
#include "openfx/host.h"

namespace brisel::openfx {

enum class Depth : std::uint8_t { Byte, Short, Float };

/// Red, green, blue and, of four channels, alpha.
struct PixelLayout {
  Depth depth = Depth::Byte;
  bool hasAlpha = true;
  bool isPremultiplied = false;  // color by alpha

  std::ptrdiff_t channelBytes() const;
  std::ptrdiff_t bytes() const;  // of a pixel
  friend bool operator==(const PixelLayout&, const PixelLayout&) = default;
};

/// Pixels of the host's grid, whose rows go up. Borrowed.
struct HostPixels {
  std::uint8_t* data = nullptr;  // of the pixel (x1, y1)
  OfxRectI bounds{};
  std::ptrdiff_t rowBytes = 0;  // may be negative
  PixelLayout layout{};

  std::uint8_t* at(int x, int y) const {
    return data + rowBytes * (std::ptrdiff_t{y} - bounds.y1) +
           layout.bytes() * (std::ptrdiff_t{x} - bounds.x1);
  }
};

inline OfxRectI overlap(const OfxRectI& a, const OfxRectI& b) {
  return {a.x1 > b.x1 ? a.x1 : b.x1, a.y1 > b.y1 ? a.y1 : b.y1, a.x2 < b.x2 ? a.x2 : b.x2,
          a.y2 < b.y2 ? a.y2 : b.y2};
}
inline bool isEmpty(const OfxRectI& rectangle) {
  return rectangle.x1 >= rectangle.x2 || rectangle.y1 >= rectangle.y2;
}

/// Whether `b` lies within `a`.
inline bool contains(const OfxRectI& a, const OfxRectI& b) {
  return a.x1 <= b.x1 && a.y1 <= b.y1 && a.x2 >= b.x2 && a.y2 >= b.y2;
}

/// How large a picture the host wants, of the full one.
struct RenderScale {
  double x = 1, y = 1;
};

/// Fetched for its life, and given back.
class HostImage {
 public:
  HostImage(const Host& host, OfxImageClipHandle clip, OfxTime time, RenderScale scale);
  HostImage(const HostImage&) = delete;
  HostImage& operator=(const HostImage&) = delete;
  ~HostImage();

  /// Nothing when there is no image, or an empty one, or one with a fault.
  const std::optional<HostPixels>& pixels() const { return pixels_; }

  /// Why the image cannot be used, to follow its name; or empty. Such have a depth or components
  /// that nobody declared, too many pixels, or rows shorter than their pixels.
  const std::string& fault() const { return fault_; }

  /// The whole picture, in pixels: that of which the image may show a part.
  const OfxRectI& frame() const { return frame_; }

  /// OfxImagePropField: the image has the rows of one field only.
  bool isField() const { return isField_; }

 private:
  std::string read(OfxImageClipHandle clip, RenderScale scale);

  const Host& host_;
  OfxPropertySetHandle handle_ = nullptr;
  std::optional<HostPixels> pixels_;
  std::string fault_;
  OfxRectI frame_{};
  bool isField_ = false;
};

}  // namespace brisel::openfx
