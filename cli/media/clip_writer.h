// A clip encoded by ffmpeg from frames sent down a pipe.
#pragma once

#include "cli/media/frame_writer.h"
#include "cli/support/child_process.h"
#include "cli/support/temporary_file.h"

namespace cli {

class ClipWriter : public FrameWriter {
 public:
  ClipWriter(const OutputTarget& target, FrameSize size, FrameRate rate, Depth depth);

  std::span<const std::uint8_t> encode(const Frame& frame,
                                       std::vector<std::uint8_t>& buffer) const override;
  bool isSlowToEncode() const override { return false; }
  void write(std::span<const std::uint8_t> encoded, int number) override;
  void finish() override;
  void abandon() override { encoder_.kill(); }

 private:
  [[noreturn]] void fail();

  OutputTarget target_;
  TemporaryFile temporary_;  // outlives the encoder, so that nothing is written after its removal
  ChildProcess encoder_;
};

}  // namespace cli
