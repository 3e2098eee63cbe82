// The frames of a still or clip, one after another, in the scene's size, rate and depth.
#pragma once

#include <string>

#include "cli/media/media_info.h"
#include "cli/pictures/frame.h"
#include "cli/support/child_process.h"
#include "hostkit/world.h"

namespace cli {

// The interleaved channels that ffmpeg is to send.
enum class PipePixels { kArgb8, kRgba8, kRgba16 };

class FrameReader {
 public:
  // Pictures of another size are fitted into it, see fittedFrame.
  FrameReader(const MediaInfo& info, FrameSize size, scene::FrameRate rate, Depth depth);

  // Puts the next frame into the world, which has the reader's size and depth; false at the end.
  // Throws WorkError naming the input when it cannot be decoded.
  bool next(hostkit::World& world);

  // Makes next() fail soon, even one that waits for the decoder in another thread.
  void stop() { decoder_.kill(); }

  // What the decoder has complained about so far, while it still delivered pictures; empty when all
  // was well.
  std::string complaint() const { return decoder_.firstComplaint(); }

 private:
  bool endOfFile(std::size_t bytesRead);

  std::string name_;
  FrameSize size_;
  Depth depth_;
  PipePixels pixels_;
  ChildProcess decoder_;
  Frame decoded_;  // empty where pictures come as the host has them
  bool hasFrame_ = false;
};

}  // namespace cli
