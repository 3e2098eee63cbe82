#include "cli/media/frame_writer.h"

#include "cli/media/clip_writer.h"
#include "cli/media/picture_writer.h"

namespace cli {

std::unique_ptr<FrameWriter> openFrameWriter(const OutputTarget& target, FrameSize size,
                                             FrameRate rate, Depth depth,
                                             const std::optional<Soundtrack>& sound) {
  if (target.holdsPictures()) return std::make_unique<PictureWriter>(target);
  return std::make_unique<ClipWriter>(target, size, rate, depth, sound);
}

}  // namespace cli
