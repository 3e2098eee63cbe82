// How ffmpeg is to make a clip of the frames it is sent.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/media/output_target.h"
#include "cli/media/soundtrack.h"
#include "cli/pictures/frame.h"
#include "scene/frame_rate.h"

namespace cli {

// What ffmpeg takes from the pipe.
enum class PipedFrames {
  Argb8,        // as the host has them
  Rgba16,       // as a Frame holds them
  FlatPlanes8,  // green, blue and red over black: the format has no alpha, or only on and off
  Flat16,       // over black
  Png           // files, which end up in the clip as they are
};

PipedFrames pipedFrames(const OutputTarget& target, Depth depth);

// The command line that writes the target into `file`, or onto standard output without one.
std::vector<std::string> encodeCommand(const OutputTarget& target,
                                       const std::optional<std::filesystem::path>& file,
                                       FrameSize size, scene::FrameRate rate, Depth depth,
                                       const std::optional<Soundtrack>& sound);

// The command line that copies the pictures of clips, which an ffconcat list names, into one file
// of the target's kind.
std::vector<std::string> joinCommand(const OutputTarget& target, const std::filesystem::path& list,
                                     const std::filesystem::path& file, scene::FrameRate rate,
                                     const std::optional<Soundtrack>& sound);

}  // namespace cli
