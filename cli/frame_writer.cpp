#include "frame_writer.h"

#include "clip_writer.h"
#include "png_writer.h"

namespace cli {
namespace {

class PngSequenceWriter : public FrameWriter {
 public:
  explicit PngSequenceWriter(OutputTarget target) : target_(std::move(target)) {}

  void write(const Frame& frame, int number) override { writePng(frame, target_.numbered(number)); }
  void finish() override {}

 private:
  OutputTarget target_;
};

}  // namespace

std::unique_ptr<FrameWriter> openFrameWriter(const OutputTarget& target, FrameSize size,
                                             FrameRate rate, Depth depth) {
  if (target.kind == OutputKind::kPngSequence || target.kind == OutputKind::kSinglePng) {
    return std::make_unique<PngSequenceWriter>(target);
  }
  return std::make_unique<ClipWriter>(target, size, rate, depth);
}

}  // namespace cli
