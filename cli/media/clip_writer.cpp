#include "cli/media/clip_writer.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "cli/media/png_writer.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

std::vector<std::string> commandFor(const OutputTarget& target,
                                    std::optional<TemporaryFile>& temporary, FrameSize size,
                                    FrameRate rate, Depth depth,
                                    const std::optional<Soundtrack>& sound) {
  if (target.isStandardOutput()) {
    return encodeCommand(target, std::nullopt, size, rate, depth, sound);
  }
  temporary.emplace(target.path);
  return encodeCommand(target, temporary->path(), size, rate, depth, sound);
}

}  // namespace

ClipWriter::ClipWriter(const OutputTarget& target, FrameSize size, FrameRate rate, Depth depth,
                       const std::optional<Soundtrack>& sound)
    : target_(target),
      frames_(pipedFrames(target)),
      sound_(sound),
      encoder_(commandFor(target, temporary_, size, rate, depth, sound),
               target.isStandardOutput() ? ChildProcess::Pipe::kThroughToOurOutput
                                         : ChildProcess::Pipe::kToItsInput) {}

std::span<const std::uint8_t> ClipWriter::encode(const Frame& frame,
                                                 std::vector<std::uint8_t>& buffer) const {
  switch (frames_) {
    case PipedFrames::kPng:
      encodePng(frame, buffer);
      return buffer;
    case PipedFrames::kFlatRgb:
      flattenOnBlack(frame, buffer);
      return buffer;
    default:
      return frame.bytes;
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

}  // namespace cli
