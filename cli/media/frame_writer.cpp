#include "cli/media/frame_writer.h"

#include "cli/media/clip_writer.h"
#include "cli/media/png_writer.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

class PngSequenceWriter : public FrameWriter {
 public:
  explicit PngSequenceWriter(OutputTarget target) : target_(std::move(target)) {}

  std::span<const std::uint8_t> encode(const Frame& frame,
                                       std::vector<std::uint8_t>& buffer) const override {
    encodePng(frame, buffer);
    return buffer;
  }
  bool isSlowToEncode() const override { return true; }
  void write(std::span<const std::uint8_t> encoded, int number) override {
    writeWholeFile(target_.numbered(number), encoded);
  }
  void finish() override {}
  void abandon() override {}

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
