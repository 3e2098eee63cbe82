#include "frame_reader.h"

#include <algorithm>
#include <cmath>

#include "errors.h"

namespace cli {
namespace {

constexpr char kExactConversion[] =
    "flags=bicubic+accurate_rnd+full_chroma_int+full_chroma_inp+bitexact";

std::string sizeText(FrameSize size) {
  return std::to_string(size.width) + ":" + std::to_string(size.height);
}

FrameSize fitted(FrameSize picture, FrameSize box) {
  const double scale = std::min(static_cast<double>(box.width) / picture.width,
                                static_cast<double>(box.height) / picture.height);
  const auto side = [scale](int length, int limit) {
    return std::clamp(static_cast<int>(std::lround(length * scale)), 1, limit);
  };
  return {side(picture.width, box.width), side(picture.height, box.height)};
}

std::string scaleTo(FrameSize size) {
  return "scale=" + sizeText(size) + ":" + kExactConversion;
}

// ffmpeg's recipe from the decoded picture to our pixels.
std::string filterChain(const MediaInfo& info, FrameSize size, FrameRate rate,
                        const std::string& pixelFormat) {
  std::string chain;
  if (!info.isStill()) chain += "setpts=PTS-STARTPTS,fps=" + rate.text() + ",";
  chain += scaleTo(info.size);
  if (!info.matrix.empty()) chain += ":in_color_matrix=" + info.matrix;
  if (info.size == size) return chain;
  // Scaled premultiplied, so that colours hidden under alpha 0 do not bleed into the edges.
  return chain + ",format=gbrap16,premultiply=inplace=1," + scaleTo(fitted(info.size, size)) +
         ",unpremultiply=inplace=1,format=" + pixelFormat + ",pad=" + sizeText(size) +
         ":(ow-iw)/2:(oh-ih)/2:color=black@0";
}

std::vector<std::string> decodeCommand(const std::filesystem::path& path, const MediaInfo& info,
                                       FrameSize size, FrameRate rate, Depth depth) {
  const std::string pixelFormat = depth == Depth::k8 ? "rgba" : "rgba64le";
  std::vector<std::string> command = {"ffmpeg", "-v", "error", "-nostdin"};
  if (!info.decoder.empty()) command.insert(command.end(), {"-c:v", info.decoder});
  command.insert(command.end(), {"-i", mediaArgument(path), "-map", "0:v:0", "-vf",
                                 filterChain(info, size, rate, pixelFormat)});
  if (info.isStill()) command.insert(command.end(), {"-frames:v", "1"});
  command.insert(command.end(), {"-pix_fmt", pixelFormat, "-f", "rawvideo", "pipe:1"});
  return command;
}

}  // namespace

FrameReader::FrameReader(const std::filesystem::path& path, const MediaInfo& info, FrameSize size,
                         FrameRate rate, Depth depth)
    : name_(path.string()),
      decoder_(std::make_unique<ChildProcess>(decodeCommand(path, info, size, rate, depth),
                                              ChildProcess::Pipe::kFromItsOutput)),
      frame_(size, depth) {}

const Frame& FrameReader::next() {
  if (!decoder_) return frame_;
  // Read aside: the frame on show must survive when this turns out to be the end.
  Frame incoming(frame_.size, frame_.depth);
  const std::size_t count = decoder_->read(incoming.bytes);
  if (count == incoming.bytes.size()) {
    frame_ = std::move(incoming);
    hasFrame_ = true;
  } else {
    endOfFile(count);
  }
  return frame_;
}

void FrameReader::endOfFile(std::size_t bytesRead) {
  const bool succeeded = decoder_->finish();
  complaint_ = decoder_->firstComplaint();
  decoder_.reset();
  if (succeeded && hasFrame_ && bytesRead == 0) return;
  throw WorkError("cannot read the input " + inQuotes(name_) + ": " +
                  (complaint_.empty() ? "it ends in the middle of a picture" : complaint_));
}

}  // namespace cli
