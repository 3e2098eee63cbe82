// What stills and clips hold, read as the program reads its input.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "cli/media/media_info.h"
#include "cli/pictures/frame.h"

namespace tests {

// Of the file alone, numbered or not.
cli::MediaInfo infoOf(const std::filesystem::path& file);

// Until the end; at the input's own size and rate where none is given.
std::vector<cli::Frame> picturesOf(const cli::MediaInfo& info, cli::Depth depth = cli::Depth::k8,
                                   std::optional<cli::FrameRate> rate = {},
                                   std::optional<cli::FrameSize> size = {});
inline std::vector<cli::Frame> picturesOf(const std::filesystem::path& file,
                                          cli::Depth depth = cli::Depth::k8) {
  return picturesOf(infoOf(file), depth);
}

}  // namespace tests
