// Where to begin with an input of which only later frames are wanted.
#pragma once

#include <string>
#include <vector>

#include "cli/media/media_info.h"

namespace cli {

struct SeekPoint {
  int frame = 0;                     // the first that comes out
  std::vector<std::string> options;  // for ffmpeg, before the input
};

// The wanted frame or one before it; the start of the input where nothing else is sure to give the
// same pictures.
SeekPoint seekPointFor(const MediaInfo& info, scene::FrameRate rate, int wanted);

}  // namespace cli
