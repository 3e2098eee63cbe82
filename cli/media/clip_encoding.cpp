#include "cli/media/clip_encoding.h"

#include <iterator>
#include <sstream>

#include "cli/media/clip_part.h"
#include "cli/media/ffprobe.h"
#include "cli/media/media_source.h"

namespace cli {
namespace {

// Luma and chroma by BT.709 at the narrow range, and the tags that say so; some encoders take them
// from the frames, others from the options.
constexpr char kToVideoColors[] =
    "scale=flags=bicubic+accurate_rnd+full_chroma_int+full_chroma_inp:"
    "out_color_matrix=bt709:out_range=tv,"
    "setparams=colorspace=bt709:color_primaries=bt709:color_trc=bt709:range=tv,format=";
constexpr char kVideoColorTags[] =
    " -colorspace bt709 -color_primaries bt709 -color_trc bt709 -color_range tv ";

constexpr char kWithColorAtom[] = " -movflags +write_colr";

// Without a number that is drawn for each file: a clip rendered again has the same bytes.
constexpr char kWebm[] = " -fflags +bitexact -f webm";

std::string movOptions(MovCodec codec) {
  switch (codec) {
    case MovCodec::Qtrle:
      return "-c:v qtrle -pix_fmt argb -f mov";
    case MovCodec::Png:
      return "-c:v copy -f mov";
    default:
      // The finest quantiser, at which the encoder's long search ends anyway.
      return std::string("-vf ") + kToVideoColors +
             "yuva444p10le -c:v prores_ks -profile:v 4444 -qscale:v 1 -alpha_bits 16 -vendor apl0" +
             kVideoColorTags + kWithColorAtom + " -f mov";
  }
}

std::string mp4Options(Depth depth) {
  // Even sides, as players of this format require.
  const std::string filter = std::string("-vf pad=ceil(iw/2)*2:ceil(ih/2)*2,") + kToVideoColors;
  const std::string codec =
      depth == Depth::Bits8
          ? "yuv420p -c:v libx264 -preset veryfast -crf 15"
          : "yuv420p10le -c:v libx265 -preset medium -crf 17 -x265-params log-level=error "
            "-tag:v hvc1";
  return filter + codec + kVideoColorTags + "-f mp4";
}

std::string encoderOptions(const OutputTarget& target, Depth depth) {
  switch (target.format) {
    case OutputFormat::Mov:
      return movOptions(target.codec);
    case OutputFormat::Mp4:
      return mp4Options(depth);
    case OutputFormat::Webm:
      // The alternate reference frames of the encoder do not go with alpha.
      return std::string("-vf ") + kToVideoColors +
             "yuva420p -c:v libvpx-vp9 -crf 16 -b:v 0 -deadline good -cpu-used 4 -row-mt 1 "
             "-auto-alt-ref 0" +
             kVideoColorTags + kWebm;
    case OutputFormat::Gif:
      // A palette for each frame: better colors, and no need to hold the whole clip. Diffused
      // errors leave neither the rings around glows nor the grid on black that ordered dithers do.
      return "-vf split[a][b];[a]palettegen=stats_mode=single[p];"
             "[b][p]paletteuse=new=1:dither=sierra2_4a -loop 0 -f gif";
    case OutputFormat::Apng:
      return std::string("-c:v apng -compression_level 3 -plays 0 -f apng -pix_fmt ") +
             (depth == Depth::Bits8 ? "rgba" : "rgba64be");
    default:
      return "-c:v libwebp_anim -pix_fmt yuva420p -quality 90 -loop 0 -f webp";
  }
}

std::string inputOptions(PipedFrames frames, FrameSize size) {
  if (frames == PipedFrames::Png) return "-f png_pipe";
  std::string format = "rgba64le";
  if (frames == PipedFrames::Argb8) format = "argb";
  if (frames == PipedFrames::FlatPlanes8) format = "gbrp";
  return "-f rawvideo -pix_fmt " + format + " -s " + std::to_string(size.width) + "x" +
         std::to_string(size.height);
}

// What the two related containers need so that players can start at once: the index in front, or
// where nobody can go back to the front, none at all.
std::string placeOfIndex(const OutputTarget& target) {
  if (target.format != OutputFormat::Mov && target.format != OutputFormat::Mp4) return "";
  if (target.isStandardOutput()) return " -movflags +frag_keyframe+empty_moov+default_base_moof";
  return target.format == OutputFormat::Mp4 ? " -movflags +faststart" : "";
}

// Times that begin at 0, also where the sound of the parts, which is left behind, begins a little
// earlier, and that go on over their seams. One container rounds times to milliseconds, each part
// for itself; in another, clips of one or two pictures do without the lead of two that longer ones
// have for pictures sent before their turn.
std::string timesOverSeams(OutputFormat format, scene::FrameRate rate) {
  const std::string ticks =
      "*" + std::to_string(rate.seconds) + "/" + std::to_string(rate.frames) + "/TB";
  if (format == OutputFormat::Mp4) return " -bsf:v setts=pts=PTS-STARTPTS:dts=(N-2)" + ticks;
  return " -bsf:v setts=ts=round(N" + ticks + ")";
}

std::string containerOptions(const OutputTarget& target) {
  if (target.format == OutputFormat::Webm) return kWebm;
  if (target.format == OutputFormat::Mp4) return " -f mp4";
  return std::string(target.codec == MovCodec::Prores4444 ? kWithColorAtom : "") + " -f mov";
}

void append(std::vector<std::string>& command, const std::string& spaced) {
  std::istringstream stream(spaced);
  command.insert(command.end(), std::istream_iterator<std::string>(stream), {});
}

}  // namespace

PipedFrames pipedFrames(const OutputTarget& target, Depth depth) {
  if (target.format == OutputFormat::Mov && target.codec == MovCodec::Png) {
    return PipedFrames::Png;
  }
  if (target.format == OutputFormat::Mp4 || target.format == OutputFormat::Gif) {
    return depth == Depth::Bits8 ? PipedFrames::FlatPlanes8 : PipedFrames::Flat16;
  }
  return depth == Depth::Bits8 ? PipedFrames::Argb8 : PipedFrames::Rgba16;
}

std::vector<std::string> encodeCommand(const OutputTarget& target,
                                       const std::optional<std::filesystem::path>& file,
                                       FrameSize size, scene::FrameRate rate, Depth depth,
                                       const std::optional<Soundtrack>& sound) {
  std::vector<std::string> command;
  append(command, "ffmpeg -v error -nostdin -y " + inputOptions(pipedFrames(target, depth), size) +
                      " -framerate " + rate.text() + " -i pipe:0");
  if (sound) appendSoundInput(command, *sound);
  append(command, "-map 0:v " + encoderOptions(target, depth) + placeOfIndex(target));
  if (!target.comment.empty()) {
    command.insert(command.end(), {"-metadata", "comment=" + target.comment});
  }
  if (sound) appendSoundOutput(command, *sound, target.format);
  command.push_back(file ? mediaArgument(*file) : "pipe:1");
  return command;
}

std::vector<std::string> joinCommand(const OutputTarget& target, const std::filesystem::path& list,
                                     const std::filesystem::path& file, scene::FrameRate rate,
                                     const std::optional<Soundtrack>& sound) {
  std::vector<std::string> command;
  append(command, "ffmpeg -v error -nostdin -y -f concat -safe 0");
  // Each part was looked at: none is another list.
  const auto opening = openingOptions(std::string("concat,") + kPartFormats);
  command.insert(command.end(), opening.begin(), opening.end());
  command.push_back("-i");
  command.push_back(mediaArgument(list));
  if (sound) appendSoundInput(command, *sound);
  append(command, "-map 0:v -c:v copy" + timesOverSeams(target.format, rate) +
                      placeOfIndex(target) + containerOptions(target));
  if (sound) appendSoundOutput(command, *sound, target.format);
  command.push_back(mediaArgument(file));
  return command;
}

}  // namespace cli
