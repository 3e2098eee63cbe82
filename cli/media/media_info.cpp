#include "cli/media/media_info.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>

#include "cli/media/clip_timing.h"
#include "cli/media/ffprobe.h"
#include "cli/support/digest.h"
#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

using Json = nlohmann::json;

// ffprobe gives most numbers as text, and leaves out what it does not know.
std::string textOf(const Json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end()) return {};
  return found->is_string() ? found->get<std::string>() : found->dump();
}

int integerOf(const Json& object, const char* key, int otherwise) {
  return scene::parseInteger(textOf(object, key)).value_or(otherwise);
}

constexpr std::string_view kCodecsToSeek[] = {"h264",  "hevc",       "vp8",   "vp9",
                                              "av1",   "mpeg2video", "mpeg4", "prores",
                                              "dnxhd", "mjpeg",      "png",   "ffv1"};

bool liesOnItsSide(const Json& stream) {
  for (const Json& data : stream.value("side_data_list", Json::array())) {
    const int quarterTurns = integerOf(data, "rotation", 0) / 90;
    if (quarterTurns % 2 != 0) return true;
  }
  return false;
}

FrameSize seenSize(const Json& stream) {
  FrameSize size{integerOf(stream, "width", 0), integerOf(stream, "height", 0)};
  const std::string aspect = textOf(stream, "sample_aspect_ratio");
  const std::size_t colon = aspect.find(':');
  if (colon != std::string::npos) {
    const int across = scene::parseInteger(aspect.substr(0, colon)).value_or(0);
    const int down = scene::parseInteger(aspect.substr(colon + 1)).value_or(0);
    if (across > 0 && down > 0) {
      size.width = std::max(1, static_cast<int>(std::lround(1.0 * size.width * across / down)));
    }
  }
  if (liesOnItsSide(stream)) std::swap(size.width, size.height);
  return size;
}

// The usual decoders of these two leave out the second, alpha picture; the library's own read it.
std::string alphaDecoder(const Json& stream) {
  const auto tags = stream.find("tags");
  if (tags == stream.end()) return {};
  const bool hasAlpha = textOf(*tags, "alpha_mode") == "1" || textOf(*tags, "ALPHA_MODE") == "1";
  if (!hasAlpha) return {};
  const std::string codec = textOf(stream, "codec_name");
  if (codec == "vp9") return "libvpx-vp9";
  if (codec == "vp8") return "libvpx";
  return {};
}

// Players take the high-definition matrix for anything larger than standard definition.
std::string assumedMatrix(const Json& stream, FrameSize size) {
  const std::string named = textOf(stream, "color_space");
  if (!named.empty() && named != "unknown" && named != "unspecified") return {};
  return size.width >= 1280 || size.height > 576 ? "bt709" : "smpte170m";
}

bool containsOne(const std::string& text, std::initializer_list<const char*> parts) {
  return std::ranges::any_of(
      parts, [&](const char* part) { return text.find(part) != std::string::npos; });
}

void readPixelFormat(const std::string& format, MediaInfo& info) {
  info.isRgb = containsOne(format, {"rgb", "bgr", "gbr", "gray", "ya8", "ya16", "pal8", "mono"});
  info.isDeep = format.ends_with("le") || format.ends_with("be");
  info.hasAlpha = containsOne(format, {"yuva", "ayuv", "vuya"}) || !info.decoder.empty();
}

const Json& packetsOf(const Json& answer) {
  static const Json kNone = Json::array();
  const auto packets = answer.find("packets");
  return packets == answer.end() ? kNone : *packets;
}

// Of the pictures that are shown: those before an edit's start only help decode later ones.
std::vector<PictureTime> pictureTimes(const Json& packets) {
  std::vector<PictureTime> times;
  for (const Json& packet : packets) {
    const auto start = packet.find("pts");
    const std::string flags = textOf(packet, "flags");
    if (start == packet.end() || flags.find('D') != std::string::npos) continue;
    times.push_back({start->get<std::int64_t>(), packet.value("duration", std::int64_t{0}),
                     flags.find('K') != std::string::npos});
  }
  return times;
}

// Containers that lead to a key picture by an index and tell all times, and codecs whose pictures
// come out the same whichever key picture before them decoding began with.
bool canSeek(const Json& answer, const Json& stream) {
  const std::string container = textOf(answer.value("format", Json()), "format_name");
  const std::string codec = textOf(stream, "codec_name");
  return containsOne(container, {"mp4", "matroska"}) &&
         std::ranges::find(kCodecsToSeek, codec) != std::end(kCodecsToSeek) &&
         std::ranges::all_of(packetsOf(answer),
                             [](const Json& packet) { return packet.contains("pts"); });
}

void readTiming(const Json& answer, const Json& stream, bool isSeekable, MediaInfo& info) {
  const Json& packets = packetsOf(answer);
  const std::vector<PictureTime> times = pictureTimes(packets);
  info.frameCount = std::max<int>(1, static_cast<int>(packets.size()));
  DeclaredTiming declared;
  declared.average = scene::frameRateFromText(textOf(stream, "avg_frame_rate"));
  declared.nominal = scene::frameRateFromText(textOf(stream, "r_frame_rate"));
  if (const auto tick = scene::frameRateFromText(textOf(stream, "time_base"))) {
    declared.tick = tick->perSecond();
  }
  const bool isTimed = !times.empty() && times.size() * 2 >= packets.size() && declared.tick > 0;
  if (info.source.isSequence || !isTimed) {
    info.rate =
        declared.average ? *declared.average : declared.nominal.value_or(scene::FrameRate{});
    info.seconds = info.frameCount / info.rate.perSecond();
    return;
  }
  const ClipTiming timing = timingOf(times, declared);
  info.hasTimes = true;
  info.frameCount = static_cast<int>(times.size());
  info.rate = timing.rate;
  info.isVariable = timing.isVariable;
  // Sound that is there only to start a decoder may lie before 0.
  const auto start = scene::parseNumber(textOf(answer.value("format", Json()), "start_time"));
  const double first = start.value_or(timing.start);
  info.clockStart = std::min(first, 0.0);
  info.seconds = timing.seconds + std::max(0.0, timing.start - std::max(first, 0.0));
  if (!start || !isSeekable) return;
  info.pictures = times;
  std::ranges::sort(info.pictures, {}, &PictureTime::start);
  info.tick = declared.tick;
  info.fileStart = *start;
}

void readColors(const Json& stream, MediaInfo& info) {
  if (info.isRgb) return;
  const std::string transfer = textOf(stream, "color_transfer");
  if (transfer == "smpte2084") info.hdr = "PQ";
  if (transfer == "arib-std-b67") info.hdr = "HLG";
  const std::string primaries = textOf(stream, "color_primaries");
  const bool isUnknown = primaries.empty() || primaries == "unknown";
  info.isWideGamut = primaries == "bt2020" || (isUnknown && !info.hdr.empty());
}

// The order in which fields are shown; the first letter is that in which they are stored.
void readFields(const Json& stream, MediaInfo& info) {
  const std::string order = textOf(stream, "field_order");
  if (order == "tt" || order == "bt") info.firstField = "tff";
  if (order == "bb" || order == "tb") info.firstField = "bff";
}

// Without decoding them: no other pictures have the same times and sizes.
void readFingerprint(const Json& answer, MediaInfo& info) {
  Digest digest;
  for (const Json& packet : packetsOf(answer)) {
    for (const char* key : {"pts", "duration", "size", "flags"}) {
      digest.add(textOf(packet, key) + " ");
    }
  }
  digest.add(info.firstField + info.decoder);
  info.fingerprint = digest.text();
}

void addNotes(MediaInfo& info) {
  const std::string input = "the input " + inQuotes(info.source.name);
  if (!info.source.note.empty()) info.notes.push_back(info.source.note);
  if (info.isVariable) {
    info.notes.push_back(input + " has a variable frame rate and is taken at " + info.rate.text() +
                         " frames per second");
  }
  if (!info.firstField.empty()) {
    info.notes.push_back(input +
                         " is interlaced and is deinterlaced; --keep-fields leaves its fields");
  }
  if (!info.hdr.empty()) {
    info.notes.push_back(input + " is HDR (" + info.hdr + ") and is tone-mapped to BT.709");
  } else if (info.isWideGamut) {
    info.notes.push_back(input + " has BT.2020's colors and is converted to BT.709");
  }
}

MediaInfo infoOf(const MediaSource& source, const Json& answer, InputChoices choices) {
  const Json& stream = answer["streams"].front();
  MediaInfo info;
  info.source = source;
  info.size = seenSize(stream);
  info.decoder = alphaDecoder(stream);
  readPixelFormat(textOf(stream, "pix_fmt"), info);
  info.matrix = assumedMatrix(stream, info.size);
  readColors(stream, info);
  if (!choices.keepFields) readFields(stream, info);
  // The pictures of a damaged clip hold until the next whole ones.
  readTiming(answer, stream, !choices.tolerateDamage && canSeek(answer, stream), info);
  readFingerprint(answer, info);
  addNotes(info);
  return info;
}

}  // namespace

MediaInfo probeMedia(const MediaSource& source, InputChoices choices) {
  const ProbeAnswer said =
      askFfprobe(source,
                 {"-select_streams", "v:0", "-show_streams", "-show_entries",
                  "packet=pts,duration,flags,size:format=start_time,format_name", "-of", "json"},
                 "cannot read the input " + inQuotes(source.name));
  const Json answer = Json::parse(said.text, nullptr, false);
  if (!answer.is_discarded() && !answer.value("streams", Json::array()).empty()) {
    MediaInfo info = infoOf(source, answer, choices);
    if (info.size.width > 0 && info.size.height > 0) return info;
  }
  const bool isTooLarge = said.complaint.starts_with("its pictures");
  throw WorkError("the input " + inQuotes(source.name) + " holds no picture" +
                  (isTooLarge ? " that can be read: " + said.complaint : ""));
}

int framesAtRate(const MediaInfo& info, scene::FrameRate rate) {
  if (info.source.isSequence) return info.frameCount;
  return std::max(1, static_cast<int>(std::lround(info.seconds * rate.perSecond())));
}

}  // namespace cli
