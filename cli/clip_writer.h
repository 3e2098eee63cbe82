// A clip encoded by ffmpeg from frames sent down a pipe.
#pragma once

#include "child_process.h"
#include "frame_writer.h"
#include "temporary_file.h"

namespace cli {

class ClipWriter : public FrameWriter {
 public:
  ClipWriter(const OutputTarget& target, FrameSize size, FrameRate rate, Depth depth);

  void write(const Frame& frame, int number) override;
  void finish() override;

 private:
  [[noreturn]] void fail();

  OutputTarget target_;
  TemporaryFile temporary_;  // outlives the encoder, so that nothing is written after its removal
  ChildProcess encoder_;
};

}  // namespace cli
