// hostkit: a picture in memory as OpenFX hosts have them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hostkit/openfx/objects.h"

namespace hostkit {

struct PictureKind {
  std::string depth = kOfxBitDepthByte;
  std::string components = kOfxImageComponentRGBA;
  std::string alpha = kOfxImageUnPreMultiplied;
  int toldRowBytes = 0;  // in place of the true ones; 0: these
};

/// Bytes before, after and between rows, which nobody may write, lie around the pixels.
class OpenFxPicture {
 public:
  OpenFxPicture(PictureKind kind, OfxRectI bounds, bool rowsGoDown = false);

  const PictureKind& kind() const { return kind_; }
  const OfxRectI& bounds() const { return bounds_; }
  std::size_t channels() const;

  /// Channels in the order of the host, from 0 to 1; y goes up.
  double channel(int x, int y, std::size_t channel) const;
  void setChannel(int x, int y, std::size_t channel, double value);
  const std::uint8_t* at(int x, int y) const { return bytes_.data() + offset(x, y); }

  /// As it stands in memory.
  const std::vector<std::uint8_t>& bytes() const { return bytes_; }

  /// Whether nothing outside of the pixels of `window` is written since it was made.
  bool isUntouchedOutside(const OfxRectI& window) const;

  /// The image as a plug-in gets it. The picture stays where it is meanwhile.
  std::unique_ptr<OfxPropertySetStruct> image(OfxImageClipStruct& clip,
                                              const OfxRectI& frame) const;

 private:
  std::size_t channelBytes() const;
  std::ptrdiff_t offset(int x, int y) const;

  PictureKind kind_;
  OfxRectI bounds_;
  std::ptrdiff_t rowBytes_;  // negative where rows go down
  std::vector<std::uint8_t> bytes_;
};

}  // namespace hostkit
