// ffmpeg's part of reading an input: how it is asked for pictures in our size, rate and channels.
#pragma once

#include <string>
#include <vector>

#include "cli/media/media_info.h"

namespace cli {

// The interleaved channels that ffmpeg is to send.
enum class PipePixels { kArgb8, kRgba8, kRgba16 };

// The whole command line. Frames of info.size, one after another, come out of its standard output.
std::vector<std::string> decodeCommand(const MediaInfo& info, FrameRate rate, PipePixels pixels);

}  // namespace cli
