// Stills and clips, read as the program reads its input and written as it writes its output.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/media/media_info.h"
#include "cli/pictures/frame.h"

namespace tests {

// Of the file alone, numbered or not.
cli::MediaInfo infoOf(const std::filesystem::path& file);

// Until the end; at the input's own size and rate where none is given.
std::vector<cli::Frame> picturesOf(const cli::MediaInfo& info, cli::Depth depth = cli::Depth::Bits8,
                                   std::optional<scene::FrameRate> rate = {},
                                   std::optional<cli::FrameSize> size = {});
inline std::vector<cli::Frame> picturesOf(const std::filesystem::path& file,
                                          cli::Depth depth = cli::Depth::Bits8) {
  return picturesOf(infoOf(file), depth);
}

// At 25 pictures per second; all are of the size and depth of the first.
void writePictures(const std::filesystem::path& file, const std::vector<cli::Frame>& pictures,
                   const std::string& codec = {});

}  // namespace tests
