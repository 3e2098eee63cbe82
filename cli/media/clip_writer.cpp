#include "cli/media/clip_writer.h"

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "cli/media/media_info.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

using Arguments = std::vector<std::string>;

// Formats without alpha, or with only on and off, show the frames as they look over black.
bool isFlattened(OutputKind kind) {
  return kind == OutputKind::kMp4 || kind == OutputKind::kGif;
}

std::string pipeFormat(OutputKind kind, Depth depth) {
  if (isFlattened(kind)) return depth == Depth::k8 ? "rgb24" : "rgb48le";
  return depth == Depth::k8 ? "rgba" : "rgba64le";
}

std::string encoderOptions(OutputKind kind, Depth depth) {
  const bool deep = depth == Depth::k16;
  switch (kind) {
    case OutputKind::kMov:
      if (!deep) return "-c:v qtrle -pix_fmt argb -f mov";
      return "-c:v png -pred up -compression_level 3 -pix_fmt rgba64be -f mov";
    case OutputKind::kMp4:
      // Even sides, as players of this format require.
      return "-vf pad=ceil(iw/2)*2:ceil(ih/2)*2,"
             "scale=flags=bicubic+accurate_rnd:out_color_matrix=bt709:out_range=tv "
             "-c:v libx264 -preset medium -crf 16 -pix_fmt yuv420p -colorspace bt709 "
             "-color_primaries bt709 -color_trc bt709 -color_range tv -movflags +faststart -f mp4";
    case OutputKind::kGif:
      // A palette for each frame: better colours, and no need to hold the whole clip.
      return "-vf split[a][b];[a]palettegen=stats_mode=single[p];"
             "[b][p]paletteuse=new=1:dither=bayer:bayer_scale=4 -loop 0 -f gif";
    case OutputKind::kApng:
      return std::string("-c:v apng -compression_level 3 -plays 0 -f apng -pix_fmt ") +
             (deep ? "rgba64be" : "rgba");
    default:
      return "-c:v libwebp_anim -pix_fmt yuva420p -quality 90 -loop 0 -f webp";
  }
}

Arguments splitAtSpaces(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

Arguments encodeCommand(const OutputTarget& target, const std::filesystem::path& file,
                        FrameSize size, FrameRate rate, Depth depth) {
  Arguments command = splitAtSpaces(
      "ffmpeg -v error -nostdin -y -f rawvideo -pix_fmt " + pipeFormat(target.kind, depth) +
      " -s " + std::to_string(size.width) + "x" + std::to_string(size.height) + " -framerate " +
      rate.text() + " -i pipe:0 " + encoderOptions(target.kind, depth));
  command.push_back(mediaArgument(file));
  return command;
}

}  // namespace

ClipWriter::ClipWriter(const OutputTarget& target, FrameSize size, FrameRate rate, Depth depth)
    : target_(target),
      temporary_(target.path),
      encoder_(encodeCommand(target, temporary_.path(), size, rate, depth),
               ChildProcess::Pipe::kToItsInput) {}

std::span<const std::uint8_t> ClipWriter::encode(const Frame& frame,
                                                 std::vector<std::uint8_t>& buffer) const {
  if (!isFlattened(target_.kind)) return frame.bytes;
  flattenOnBlack(frame, buffer);
  return buffer;
}

void ClipWriter::write(std::span<const std::uint8_t> encoded, int) {
  if (!encoder_.write(encoded)) fail();
}

void ClipWriter::finish() {
  // An encoder that ran out of space for its last bytes complains, yet may call that success.
  if (!encoder_.finish() || !encoder_.firstComplaint().empty()) fail();
  temporary_.commit();
}

void ClipWriter::fail() {
  encoder_.finish();
  const std::string complaint = encoder_.firstComplaint();
  throw WorkError("cannot write " + inQuotes(target_.path.string()) + ": " +
                  (complaint.empty() ? "ffmpeg gave up" : complaint));
}

}  // namespace cli
