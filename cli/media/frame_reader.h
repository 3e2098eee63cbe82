// The frames of a still or clip, one after another, in the scene's size, rate and depth.
#pragma once

#include <filesystem>
#include <string>

#include "cli/media/media_info.h"
#include "cli/pictures/frame.h"
#include "cli/support/child_process.h"

namespace cli {

class FrameReader {
 public:
  // Pictures of another size are fitted into it, see fittedFrame.
  FrameReader(const std::filesystem::path& path, const MediaInfo& info, FrameSize size,
              FrameRate rate, Depth depth);

  // The next frame, valid until the next call; after the end the last one again. Throws WorkError
  // naming the file when it cannot be decoded.
  const Frame& next();

  // Whether the last call of next() found no more frames.
  bool ended() const { return ended_; }

  // Makes next() fail soon, even one that waits for the decoder in another thread.
  void stop() { decoder_.kill(); }

  // What the decoder complained about while it still delivered pictures; empty when all was well.
  const std::string& complaint() const { return complaint_; }

 private:
  void endOfFile(std::size_t bytesRead);

  std::string name_;
  ChildProcess decoder_;
  Frame decoded_;
  Frame fitted_;
  bool hasFrame_ = false;
  bool ended_ = false;
  std::string complaint_;
};

}  // namespace cli
