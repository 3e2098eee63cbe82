#include "cli/media/frame_reader.h"

#include "cli/pictures/frame_fit.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

// ffmpeg is exact for RGB only where the depth stays; the rest we convert ourselves.
PipePixels pipePixels(const MediaInfo& info, FrameSize size, Depth wanted) {
  const bool deep = info.isRgb ? info.isDeep : wanted == Depth::k16;
  if (deep) return PipePixels::kRgba16;
  return wanted == Depth::k8 && size == info.size ? PipePixels::kArgb8 : PipePixels::kRgba8;
}

}  // namespace

FrameReader::FrameReader(const MediaInfo& info, FrameSize size, FrameRate rate, Depth depth)
    : name_(info.source.name),
      size_(size),
      depth_(depth),
      pixels_(pipePixels(info, size, depth)),
      decoder_(decodeCommand(info, rate, pixels_), ChildProcess::Pipe::kFromItsOutput) {
  if (pixels_ != PipePixels::kArgb8) {
    decoded_ = Frame(info.size, pixels_ == PipePixels::kRgba16 ? Depth::k16 : Depth::k8);
  }
}

bool FrameReader::next(hostkit::World& world) {
  const std::span<std::uint8_t> bytes =
      pixels_ == PipePixels::kArgb8 ? world.bytes() : std::span<std::uint8_t>(decoded_.bytes);
  const std::size_t count = decoder_.read(bytes);
  if (count != bytes.size()) return endOfFile(count);
  hasFrame_ = true;
  if (pixels_ == PipePixels::kArgb8) return true;
  if (decoded_.size == size_ && decoded_.depth == depth_) {
    copyToWorld(decoded_, world);
  } else {
    copyToWorld(fittedFrame(inDepth(decoded_, depth_), size_), world);
  }
  return true;
}

bool FrameReader::endOfFile(std::size_t bytesRead) {
  const bool succeeded = decoder_.finish();
  if (succeeded && hasFrame_ && bytesRead == 0) return false;
  std::string reason = decoder_.firstComplaint();
  if (reason.empty()) reason = "it ends in the middle of a picture";
  if (reason.starts_with("No such filter")) {
    reason += "; this ffmpeg lacks what converts colours, which Debian's has";
  }
  throw WorkError("cannot read the input " + inQuotes(name_) + ": " + reason);
}

}  // namespace cli
