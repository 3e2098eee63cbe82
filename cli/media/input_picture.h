// A picture of the input, from the bytes that ffmpeg sends to the world that the effect is given.
#pragma once

#include <cstdint>
#include <span>

#include "cli/pictures/frame.h"
#include "hostkit/world.h"

namespace cli {

// What ffmpeg is to send: interleaved channels, or the planes green, blue, red and perhaps alpha.
enum class PipePixels { Argb8, Rgba8, Rgba16, GbrPlanes8, GbraPlanes8 };

class InputPicture {
 public:
  explicit InputPicture(hostkit::World world) : world_(std::move(world)) {}

  // Where a picture of that size goes as it comes from the pipe. Channels of 8 bits that are not
  // rgba go into a world of that size and depth.
  std::span<std::uint8_t> bytes(PipePixels pixels, FrameSize size);

  // Fits what was read into the world, unless that is done. Pictures can be converted on several
  // threads at once, each on one.
  void convert();

  // Converted.
  hostkit::World& world() {
    convert();
    return world_;
  }

 private:
  hostkit::World world_;
  Frame read_;  // as it came, unless that is how the world has it
  PipePixels pixels_ = PipePixels::Argb8;
  bool isConverted_ = true;
};

}  // namespace cli
