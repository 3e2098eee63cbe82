#include "cli/media/input_picture.h"

#include "cli/pictures/frame_fit.h"

namespace cli {
namespace {

void copyPlanes(const Frame& planes, bool hasAlpha, hostkit::World& world) {
  const auto width = static_cast<std::size_t>(planes.size.width);
  const std::size_t plane = width * static_cast<std::size_t>(planes.size.height);
  for (int y = 0; y < planes.size.height; ++y) {
    const std::uint8_t* green = &planes.bytes[width * static_cast<std::size_t>(y)];
    const std::uint8_t* blue = green + plane;
    const std::uint8_t* red = blue + plane;
    const std::uint8_t* alpha = hasAlpha ? red + plane : nullptr;
    PF_Pixel* pixels = world.row8(y).data();
    if (alpha == nullptr) {
      for (std::size_t x = 0; x < width; ++x) pixels[x] = {255, red[x], green[x], blue[x]};
    } else {
      for (std::size_t x = 0; x < width; ++x) pixels[x] = {alpha[x], red[x], green[x], blue[x]};
    }
  }
}

}  // namespace

std::span<std::uint8_t> InputPicture::bytes(PipePixels pixels, FrameSize size) {
  pixels_ = pixels;
  isConverted_ = pixels == PipePixels::Argb8;
  if (isConverted_) return world_.bytes();
  read_.size = size;
  read_.depth = pixels == PipePixels::Rgba16 ? Depth::Bits16 : Depth::Bits8;
  read_.bytes.resize(read_.rowBytes() * static_cast<std::size_t>(size.height));
  return std::span(read_.bytes)
      .first(pixels == PipePixels::GbrPlanes8 ? read_.bytes.size() / 4 * 3 : read_.bytes.size());
}

void InputPicture::convert() {
  if (isConverted_) return;
  isConverted_ = true;
  const FrameSize size{world_.width(), world_.height()};
  if (pixels_ == PipePixels::GbrPlanes8 || pixels_ == PipePixels::GbraPlanes8) {
    copyPlanes(read_, pixels_ == PipePixels::GbraPlanes8, world_);
  } else if (read_.size == size && read_.depth == world_.depth()) {
    copyToWorld(read_, world_);
  } else {
    copyToWorld(fittedFrame(inDepth(read_, world_.depth()), size), world_);
  }
}

}  // namespace cli
