#include "cli/media/frame_reader.h"

#include <utility>

#include "cli/pictures/frame_fit.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr char kExactConversion[] =
    ":flags=bicubic+accurate_rnd+full_chroma_int+full_chroma_inp+bitexact";

// ffmpeg is exact for RGB only where the depth stays; the rest we convert ourselves.
Depth decodedDepth(const MediaInfo& info, Depth wanted) {
  if (!info.isRgb) return wanted;
  return info.isDeep ? Depth::k16 : Depth::k8;
}

// ffmpeg's recipe from the decoded picture to our pixels.
std::string filterChain(const MediaInfo& info, FrameRate rate, Depth depth) {
  std::string chain;
  if (!info.isStill()) chain += "setpts=PTS-STARTPTS,fps=" + rate.text() + ",";
  const std::string scale = "scale=" + std::to_string(info.size.width) + ":" +
                            std::to_string(info.size.height) + kExactConversion;
  // On the direct way to 16-bit colours a full alpha of 12 bits would end below full.
  if (depth == Depth::k16 && !info.isRgb && info.isDeep) chain += scale + ",format=yuva444p16,";
  chain += scale;
  if (!info.matrix.empty()) chain += ":in_color_matrix=" + info.matrix;
  return chain;
}

std::vector<std::string> decodeCommand(const std::filesystem::path& path, const MediaInfo& info,
                                       FrameRate rate, Depth depth) {
  const std::string pixelFormat = depth == Depth::k8 ? "rgba" : "rgba64le";
  std::vector<std::string> command = {"ffmpeg", "-v", "error", "-nostdin"};
  if (!info.decoder.empty()) command.insert(command.end(), {"-c:v", info.decoder});
  command.insert(command.end(), {"-i", mediaArgument(path), "-map", "0:v:0", "-vf",
                                 filterChain(info, rate, depth)});
  if (info.isStill()) command.insert(command.end(), {"-frames:v", "1"});
  command.insert(command.end(), {"-pix_fmt", pixelFormat, "-f", "rawvideo", "pipe:1"});
  return command;
}

}  // namespace

FrameReader::FrameReader(const std::filesystem::path& path, const MediaInfo& info, FrameSize size,
                         FrameRate rate, Depth depth)
    : name_(path.string()),
      decoder_(decodeCommand(path, info, rate, decodedDepth(info, depth)),
               ChildProcess::Pipe::kFromItsOutput),
      decoded_(info.size, decodedDepth(info, depth)),
      fitted_(size, depth) {}

const Frame& FrameReader::next() {
  if (ended_) return fitted_;
  const std::size_t count = decoder_.read(decoded_.bytes);
  if (count == decoded_.bytes.size()) {
    if (decoded_.size == fitted_.size && decoded_.depth == fitted_.depth) {
      std::swap(decoded_, fitted_);
    } else {
      fitted_ = fittedFrame(inDepth(decoded_, fitted_.depth), fitted_.size);
    }
    hasFrame_ = true;
  } else {
    endOfFile(count);
  }
  return fitted_;
}

void FrameReader::endOfFile(std::size_t bytesRead) {
  ended_ = true;
  const bool succeeded = decoder_.finish();
  complaint_ = decoder_.firstComplaint();
  if (succeeded && hasFrame_ && bytesRead == 0) return;
  throw WorkError("cannot read the input " + inQuotes(name_) + ": " +
                  (complaint_.empty() ? "it ends in the middle of a picture" : complaint_));
}

}  // namespace cli
