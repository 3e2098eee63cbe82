// Where rendered frames go: numbered pictures, or a clip written by ffmpeg.
#pragma once

#include <memory>

#include "frame.h"
#include "frame_rate.h"
#include "output_target.h"

namespace cli {

class FrameWriter {
 public:
  virtual ~FrameWriter() = default;

  // Frames come in order; `number` is the frame's number in the scene. Throws WorkError naming the
  // output when it cannot be written.
  virtual void write(const Frame& frame, int number) = 0;

  // After the last frame: gives a clip its final name. A writer destroyed without it leaves no clip
  // behind; numbered frames already written stay.
  virtual void finish() = 0;
};

std::unique_ptr<FrameWriter> openFrameWriter(const OutputTarget& target, FrameSize size,
                                             FrameRate rate, Depth depth);

}  // namespace cli
