#include "tests/cli/pictures_of.h"

#include "cli/media/frame_reader.h"
#include "cli/media/frame_writer.h"

namespace tests {

cli::MediaInfo infoOf(const std::filesystem::path& file) {
  return cli::probeMedia(cli::findSource(file, {.still = true}));
}

std::vector<cli::Frame> picturesOf(const cli::MediaInfo& info, cli::Depth depth,
                                   std::optional<scene::FrameRate> rate,
                                   std::optional<cli::FrameSize> size) {
  const cli::FrameSize shown = size.value_or(info.size);
  cli::FrameReader reader(info, shown, rate.value_or(info.rate), depth);
  cli::InputPicture picture(hostkit::World(shown.width, shown.height, depth));
  std::vector<cli::Frame> pictures;
  while (reader.read(picture)) copyFromWorld(picture.world(), pictures.emplace_back());
  return pictures;
}

void writePictures(const std::filesystem::path& file, const std::vector<cli::Frame>& pictures,
                   const std::string& codec) {
  cli::OutputOptions options;
  options.name = file;
  options.codec = codec;
  const auto writer = cli::openFrameWriter(cli::parseOutputTarget(options), pictures[0].size,
                                           scene::FrameRate{25, 1}, pictures[0].depth);
  hostkit::World world(pictures[0].size.width, pictures[0].size.height, pictures[0].depth);
  cli::EncodedFrame encoded;
  int number = 0;
  for (const cli::Frame& picture : pictures) {
    copyToWorld(picture, world);
    writer->encode(world, encoded);
    writer->write(encoded.bytes, number++);
  }
  writer->finish();
}

}  // namespace tests
