#include "cli/media/frame_reader.h"

#include <utility>

#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

// Filters one after another, as ffmpeg's -vf takes them.
class FilterChain {
 public:
  void add(const std::string& filter) { text_ += (text_.empty() ? "" : ",") + filter; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string sizeOptions(const MediaInfo& info) {
  return "w=" + std::to_string(info.size.width) + ":h=" + std::to_string(info.size.height);
}

// The rate's frames from the time at which the file starts, whatever the clip's own times are.
void addTiming(const MediaInfo& info, scene::FrameRate rate, int firstFrame, FilterChain& chain) {
  if (info.isStill() || info.source.isSequence) return;
  if (!info.hasTimes) {
    chain.add("setpts=PTS-STARTPTS");
  } else if (info.clockStart < 0) {
    // ffmpeg counts from that time.
    chain.add("setpts=PTS" + scene::numberText(info.clockStart) + "/TB");
  }
  chain.add("fps=" + rate.text() + ":start_time=0");
  // The first picture stands for all frames that were sought past.
  if (firstFrame > 0) chain.add("trim=start_frame=" + std::to_string(firstFrame));
}

// To the light of BT.709, in which reference white is 203 cd/m2 in HDR: darker colors stay as they
// are, brighter ones are compressed.
void addToneMapping(const MediaInfo& info, const std::string& matrix, FilterChain& chain) {
  std::string linear = "zscale=transfer=linear:npl=203" + matrix;
  if (info.isWideGamut) linear += ":primariesin=2020";
  chain.add(linear);
  chain.add("format=gbrpf32le");
  chain.add("zscale=primaries=709");
  chain.add("tonemap=mobius:desat=0");
}

// Exact to half a step in each channel, and fast.
void addLumaConversion(const MediaInfo& info, bool deep, FilterChain& chain) {
  std::string matrix = info.matrix.empty() ? "" : ":matrixin=" + info.matrix;
  std::string convert = "zscale=" + sizeOptions(info) + ":filter=bicubic:matrix=gbr:range=full";
  if (!info.hdr.empty()) {
    addToneMapping(info, std::exchange(matrix, ""), chain);
    convert += ":transfer=709";
  } else if (info.isWideGamut) {
    convert += ":primariesin=2020:primaries=709:transferin=709:transfer=709";
  }
  chain.add(convert + matrix);
  chain.add(std::string("format=") + (info.hasAlpha ? "gbrap" : "gbrp") + (deep ? "16le" : ""));
}

std::string formatName(PipePixels pixels) {
  switch (pixels) {
    case PipePixels::Argb8:
      return "argb";
    case PipePixels::Rgba8:
      return "rgba";
    case PipePixels::GbrPlanes8:
      return "gbrp";
    case PipePixels::GbraPlanes8:
      return "gbrap";
    default:
      return "rgba64le";
  }
}

std::string filters(const MediaInfo& info, scene::FrameRate rate, PipePixels pixels,
                    int firstFrame) {
  FilterChain chain;
  if (!info.firstField.empty()) {
    chain.add("bwdif=mode=send_frame:parity=" + info.firstField + ":deint=all");
  }
  addTiming(info, rate, firstFrame, chain);
  if (info.isRgb) {
    chain.add("scale=" + sizeOptions(info) +
              ":flags=bicubic+accurate_rnd+full_chroma_int+bitexact");
  } else {
    addLumaConversion(info, pixels == PipePixels::Rgba16, chain);
  }
  chain.add("format=" + formatName(pixels));
  return chain.text();
}

// The whole command line. Frames of info.size, one after another, come out of its standard output.
std::vector<std::string> decodeCommand(const MediaInfo& info, scene::FrameRate rate,
                                       PipePixels pixels, const SeekPoint& start) {
  std::vector<std::string> command = {"ffmpeg", "-v", "error", "-nostdin"};
  if (!info.decoder.empty()) command.insert(command.end(), {"-c:v", info.decoder});
  command.insert(command.end(), info.source.options.begin(), info.source.options.end());
  command.insert(command.end(), start.options.begin(), start.options.end());
  command.insert(command.end(),
                 {"-i", info.source.file, "-map", "0:v:0", "-vf",
                  filters(info, rate, pixels, start.frame), "-fps_mode", "passthrough"});
  if (info.isStill()) command.insert(command.end(), {"-frames:v", "1"});
  command.insert(command.end(), {"-f", "rawvideo", "pipe:1"});
  return command;
}

// ffmpeg is exact for RGB only where the depth stays; the rest we convert ourselves.
PipePixels pipePixels(const MediaInfo& info, FrameSize size, Depth wanted) {
  const bool deep = info.isRgb ? info.isDeep : wanted == Depth::Bits16;
  if (deep) return PipePixels::Rgba16;
  if (wanted == Depth::Bits16 || size != info.size) return PipePixels::Rgba8;
  if (info.isRgb) return PipePixels::Argb8;
  return info.hasAlpha ? PipePixels::GbraPlanes8 : PipePixels::GbrPlanes8;
}

}  // namespace

FrameReader::FrameReader(const MediaInfo& info, FrameSize size, scene::FrameRate rate, Depth depth,
                         int firstWanted)
    : name_(info.source.name),
      size_(info.size),
      pixels_(pipePixels(info, size, depth)),
      start_(seekPointFor(info, rate, firstWanted)),
      decoder_(decodeCommand(info, rate, pixels_, start_), ChildProcess::Pipe::FromItsOutput) {}

bool FrameReader::read(InputPicture& picture) {
  const std::span<std::uint8_t> bytes = picture.bytes(pixels_, size_);
  const std::size_t count = decoder_.read(bytes);
  if (count != bytes.size()) return endOfFile(count);
  hasFrame_ = true;
  return true;
}

bool FrameReader::endOfFile(std::size_t bytesRead) {
  const bool succeeded = decoder_.finish();
  if (succeeded && hasFrame_ && bytesRead == 0) return false;
  std::string reason = decoder_.firstComplaint();
  if (reason.empty()) reason = "it ends in the middle of a picture";
  if (reason.starts_with("No such filter")) {
    reason += "; this ffmpeg lacks what converts colors, which Debian's has";
  }
  throw WorkError("cannot read the input " + inQuotes(name_) + ": " + reason);
}

}  // namespace cli
