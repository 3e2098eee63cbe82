// The frames of a still or clip, one after another, in the scene's size, rate and depth.
#pragma once

#include <string>

#include "cli/media/input_picture.h"
#include "cli/media/media_info.h"
#include "cli/media/seek_point.h"
#include "cli/pictures/frame.h"
#include "cli/support/child_process.h"

namespace cli {

class FrameReader {
 public:
  // Pictures of another size are fitted into it, see fittedFrame. Begins with the first frame that
  // is wanted where the pictures from there on come out as they would otherwise, else before it.
  FrameReader(const MediaInfo& info, FrameSize size, scene::FrameRate rate, Depth depth,
              int firstWanted = 0);

  // The number of the frame that it begins with.
  int firstFrame() const { return start_.frame; }

  // Reads the next frame into a picture of the reader's size and depth, which is converted later;
  // false at the end. Throws WorkError naming the input when it cannot be decoded.
  bool read(InputPicture& picture);

  // Makes read() fail soon, even one that waits for the decoder in another thread.
  void stop() { decoder_.kill(); }

  // What the decoder has complained about so far, while it still delivered pictures; empty when all
  // was well.
  std::string complaint() const { return decoder_.firstComplaint(); }

 private:
  bool endOfFile(std::size_t bytesRead);

  std::string name_;
  FrameSize size_;  // of what is decoded
  PipePixels pixels_;
  SeekPoint start_;
  ChildProcess decoder_;
  bool hasFrame_ = false;
};

}  // namespace cli
