#include "cli/media/media_info.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "cli/support/child_process.h"
#include "cli/support/errors.h"
#include "cli/support/numbers.h"

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
  return parseInteger(textOf(object, key)).value_or(otherwise);
}

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
    const int across = parseInteger(aspect.substr(0, colon)).value_or(0);
    const int down = parseInteger(aspect.substr(colon + 1)).value_or(0);
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
  return size.width >= 1280 || size.height > 576 ? "bt709" : "bt601";
}

bool isRgbFormat(const std::string& pixelFormat) {
  for (const char* part : {"rgb", "bgr", "gbr", "gray", "ya8", "ya16", "pal8", "mono"}) {
    if (pixelFormat.find(part) != std::string::npos) return true;
  }
  return false;
}

MediaInfo infoOf(const Json& stream) {
  MediaInfo info;
  info.size = seenSize(stream);
  info.frameCount = std::max(1, integerOf(stream, "nb_read_packets", 1));
  const auto average = frameRateFromText(textOf(stream, "avg_frame_rate"));
  const auto nominal = frameRateFromText(textOf(stream, "r_frame_rate"));
  info.rate = average ? *average : nominal.value_or(FrameRate{});
  info.decoder = alphaDecoder(stream);
  const std::string pixelFormat = textOf(stream, "pix_fmt");
  info.isRgb = isRgbFormat(pixelFormat);
  info.isDeep = pixelFormat.ends_with("le") || pixelFormat.ends_with("be");
  info.matrix = assumedMatrix(stream, info.size);
  return info;
}

// Numbered frames, such as frame_%04d.png, are named by a pattern rather than by a file.
bool isSequencePattern(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::exists(path, error)) return false;
  const std::string name = path.filename().string();
  for (std::size_t at = name.find('%'); at != name.npos; at = name.find('%', at + 1)) {
    const std::size_t end = name.find_first_not_of("0123456789", at + 1);
    if (end != name.npos && name[end] == 'd') return true;
  }
  return false;
}

}  // namespace

std::string mediaArgument(const std::filesystem::path& path) {
  return "file:" + path.string();
}

MediaInfo probeMedia(const std::filesystem::path& path) {
  const std::string name = path.string();
  if (!isSequencePattern(path)) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
      throw WorkError("the input " + inQuotes(name) + " does not exist");
    }
    if (std::filesystem::is_directory(path, error)) {
      throw WorkError("the input " + inQuotes(name) + " is a folder, not a picture or clip");
    }
  }
  const std::string failure = "cannot read the input " + inQuotes(name);
  const std::string answer =
      outputOf({"ffprobe", "-v", "error", "-select_streams", "v:0", "-count_packets",
                "-show_streams", "-of", "json", mediaArgument(path)},
               failure);
  const Json json = Json::parse(answer, nullptr, false);
  if (json.is_discarded() || json.value("streams", Json::array()).empty()) {
    throw WorkError("the input " + inQuotes(name) + " holds no picture");
  }
  const MediaInfo info = infoOf(json["streams"].front());
  if (info.size.width <= 0 || info.size.height <= 0) {
    throw WorkError("the input " + inQuotes(name) + " holds no picture");
  }
  return info;
}

int framesAtRate(const MediaInfo& info, FrameRate rate) {
  if (rate == info.rate) return info.frameCount;
  const double seconds = info.frameCount / info.rate.perSecond();
  return std::max(1, static_cast<int>(std::lround(seconds * rate.perSecond())));
}

}  // namespace cli
