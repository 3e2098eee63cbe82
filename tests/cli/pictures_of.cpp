#include "tests/cli/pictures_of.h"

#include "cli/media/frame_reader.h"

namespace tests {

cli::MediaInfo infoOf(const std::filesystem::path& file) {
  return cli::probeMedia(cli::findSource(file, {.still = true}));
}

std::vector<cli::Frame> picturesOf(const cli::MediaInfo& info, cli::Depth depth,
                                   std::optional<cli::FrameRate> rate,
                                   std::optional<cli::FrameSize> size) {
  const cli::FrameSize shown = size.value_or(info.size);
  cli::FrameReader reader(info, shown, rate.value_or(info.rate), depth);
  hostkit::World world(shown.width, shown.height, depth);
  std::vector<cli::Frame> pictures;
  while (reader.next(world)) {
    copyFromWorld(world, pictures.emplace_back(shown, depth));
  }
  return pictures;
}

}  // namespace tests
