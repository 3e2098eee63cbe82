#include "cli/media/frame_writer.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "cli/media/clip_encoding.h"
#include "cli/media/exr_writer.h"
#include "cli/media/png_writer.h"
#include "cli/support/child_process.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

void writeToStandardOutput(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    } else if (errno == EINTR) {
      throwIfInterrupted();
    } else {
      throw WorkError(std::string("cannot write standard output: ") + std::strerror(errno));
    }
  }
}

// Frames as pictures of their own: numbered files, one file, or one after another on standard
// output.
class PictureWriter : public FrameWriter {
 public:
  explicit PictureWriter(OutputTarget target) : target_(std::move(target)) {}

  void encode(const hostkit::World& picture, EncodedFrame& encoded) const override;
  void write(std::span<const std::uint8_t> encoded, int number) override;
  void finish() override {}

 private:
  OutputTarget target_;
};

void PictureWriter::encode(const hostkit::World& picture, EncodedFrame& encoded) const {
  copyFromWorld(picture, encoded.frame);
  if (target_.format == OutputFormat::Png) {
    encodePng(encoded.frame, encoded.buffer);
  } else {
    encodeExr(encoded.frame, encoded.buffer);
  }
  encoded.bytes = encoded.buffer;
}

void PictureWriter::write(std::span<const std::uint8_t> encoded, int number) {
  if (target_.isStandardOutput()) {
    writeToStandardOutput(encoded);
  } else {
    writeWholeFile(target_.fileOf(number), encoded);
  }
}

std::vector<std::string> commandFor(const OutputTarget& target,
                                    std::optional<TemporaryFile>& temporary, FrameSize size,
                                    scene::FrameRate rate, Depth depth,
                                    const std::optional<Soundtrack>& sound) {
  if (target.isStandardOutput()) {
    return encodeCommand(target, std::nullopt, size, rate, depth, sound);
  }
  temporary.emplace(target.path);
  return encodeCommand(target, temporary->path(), size, rate, depth, sound);
}

// A clip encoded by ffmpeg from frames sent down a pipe.
class ClipWriter : public FrameWriter {
 public:
  ClipWriter(const OutputTarget& target, FrameSize size, scene::FrameRate rate, Depth depth,
             const std::optional<Soundtrack>& sound);

  void encode(const hostkit::World& picture, EncodedFrame& encoded) const override;
  void write(std::span<const std::uint8_t> encoded, int number) override;
  void finish() override;
  std::string warning() const override { return warning_; }

 private:
  bool couldNotWrite() const;
  [[noreturn]] void fail();

  OutputTarget target_;
  PipedFrames frames_;
  std::optional<Soundtrack> sound_;
  std::string warning_;
  // Outlives the encoder, so that nothing is written after its removal; none for standard output.
  std::optional<TemporaryFile> temporary_;
  ChildProcess encoder_;
};

ClipWriter::ClipWriter(const OutputTarget& target, FrameSize size, scene::FrameRate rate,
                       Depth depth, const std::optional<Soundtrack>& sound)
    : target_(target),
      frames_(pipedFrames(target, depth)),
      sound_(sound),
      encoder_(commandFor(target, temporary_, size, rate, depth, sound),
               target.isStandardOutput() ? ChildProcess::Pipe::ThroughToOurOutput
                                         : ChildProcess::Pipe::ToItsInput) {}

void ClipWriter::encode(const hostkit::World& picture, EncodedFrame& encoded) const {
  if (frames_ == PipedFrames::Argb8) {
    encoded.bytes = picture.bytes();
  } else if (frames_ == PipedFrames::FlatPlanes8) {
    flatPlanesOf(picture, encoded.buffer);
    encoded.bytes = encoded.buffer;
  } else if (frames_ == PipedFrames::Png) {
    copyFromWorld(picture, encoded.frame);
    encodePng(encoded.frame, encoded.buffer);
    encoded.bytes = encoded.buffer;
  } else {
    copyFromWorld(picture, encoded.frame);
    if (frames_ == PipedFrames::Flat16) flattenOnBlack(encoded.frame);
    encoded.bytes = encoded.frame.bytes;
  }
}

void ClipWriter::write(std::span<const std::uint8_t> encoded, int) {
  if (!encoder_.write(encoded)) fail();
}

void ClipWriter::finish() {
  if (!encoder_.finish()) fail();
  const std::string complaint = encoder_.firstComplaint();
  if (!complaint.empty()) {
    // Of frames there is nothing to complain about, of the sound there may be.
    if (!sound_ || couldNotWrite()) fail();
    warning_ = "the sound of " + inQuotes(sound_->name) + " is damaged: " + complaint;
  }
  if (temporary_) temporary_->commit();
}

// Which an encoder may call success when it concerns its last bytes.
bool ClipWriter::couldNotWrite() const {
  for (const int error : {ENOSPC, EDQUOT, EFBIG, EIO, EPIPE}) {
    if (encoder_.complainedOf(std::strerror(error))) return true;
  }
  return false;
}

void ClipWriter::fail() {
  encoder_.finish();
  const std::string complaint = encoder_.firstComplaint();
  throw WorkError("cannot write " + target_.name() + ": " +
                  (complaint.empty() ? "ffmpeg gave up" : complaint));
}

}  // namespace

std::unique_ptr<FrameWriter> openFrameWriter(const OutputTarget& target, FrameSize size,
                                             scene::FrameRate rate, Depth depth,
                                             const std::optional<Soundtrack>& sound) {
  if (target.holdsPictures()) return std::make_unique<PictureWriter>(target);
  return std::make_unique<ClipWriter>(target, size, rate, depth, sound);
}

}  // namespace cli
