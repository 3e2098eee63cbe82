// A clip encoded by ffmpeg from frames sent down a pipe.
#pragma once

#include <optional>

#include "cli/media/clip_encoding.h"
#include "cli/media/frame_writer.h"
#include "cli/support/child_process.h"
#include "cli/support/temporary_file.h"

namespace cli {

class ClipWriter : public FrameWriter {
 public:
  ClipWriter(const OutputTarget& target, FrameSize size, FrameRate rate, Depth depth,
             const std::optional<Soundtrack>& sound);

  std::span<const std::uint8_t> encode(const Frame& frame,
                                       std::vector<std::uint8_t>& buffer) const override;
  bool isSlowToEncode() const override { return frames_ == PipedFrames::kPng; }
  void write(std::span<const std::uint8_t> encoded, int number) override;
  void finish() override;
  void abandon() override { encoder_.kill(); }
  std::string warning() const override { return warning_; }

 private:
  bool couldNotWrite() const;
  [[noreturn]] void fail();

  OutputTarget target_;
  PipedFrames frames_;
  std::optional<Soundtrack> sound_;
  std::string warning_;
  // Outlives the encoder, so that nothing is written after its removal; none for standard output.
  std::optional<TemporaryFile> temporary_;
  ChildProcess encoder_;
};

}  // namespace cli
