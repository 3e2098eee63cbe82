// What a still or clip is, before its frames are read.
#pragma once

#include <filesystem>
#include <string>

#include "cli/media/frame_rate.h"
#include "cli/pictures/frame.h"

namespace cli {

struct MediaInfo {
  FrameSize size;       // as seen: square pixels, turned upright
  FrameRate rate;       // meaningless for a still
  int frameCount = 1;   // pictures in the file; 1 is a still
  std::string decoder;  // the decoder to ask for, when the usual one would lose the alpha channel
  std::string matrix;   // the colour matrix to assume, when the file does not name the one it has
  bool isRgb = false;   // or grey or a palette; else luma and chroma
  bool isDeep = false;  // more than 8 bits per channel

  bool isStill() const { return frameCount == 1; }
};

// Asks ffprobe. Throws WorkError naming the file when it is missing or holds no picture.
MediaInfo probeMedia(const std::filesystem::path& path);

// How many frames the input covers when played at the given rate.
int framesAtRate(const MediaInfo& info, FrameRate rate);

// The path as ffmpeg is to be told it: always a local file, whatever colons or dashes it contains.
std::string mediaArgument(const std::filesystem::path& path);

}  // namespace cli
