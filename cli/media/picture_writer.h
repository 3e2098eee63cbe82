// Frames as pictures of their own: numbered files, one file, or one after another on standard
// output.
#pragma once

#include "cli/media/frame_writer.h"

namespace cli {

class PictureWriter : public FrameWriter {
 public:
  explicit PictureWriter(OutputTarget target) : target_(std::move(target)) {}

  std::span<const std::uint8_t> encode(const Frame& frame,
                                       std::vector<std::uint8_t>& buffer) const override;
  bool isSlowToEncode() const override { return true; }
  void write(std::span<const std::uint8_t> encoded, int number) override;
  void finish() override {}
  void abandon() override {}

 private:
  OutputTarget target_;
};

}  // namespace cli
