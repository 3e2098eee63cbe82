#include "cli/media/soundtrack.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/media/ffprobe.h"
#include "cli/media/media_source.h"
#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

using Json = nlohmann::json;

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
  return std::ranges::find(names, name) != names.end();
}

bool takesAsItIs(OutputFormat format, std::string_view codec) {
  switch (format) {
    case OutputFormat::Mov:
      return isOneOf(codec,
                     {"aac", "alac", "mp3", "ac3", "eac3", "pcm_s16le", "pcm_s16be", "pcm_s24le",
                      "pcm_s24be", "pcm_s32le", "pcm_s32be", "pcm_f32le", "pcm_f32be"});
    case OutputFormat::Mp4:
      return isOneOf(codec, {"aac", "alac", "mp3", "ac3", "eac3", "opus"});
    default:
      return isOneOf(codec, {"opus", "vorbis"});
  }
}

std::string secondsText(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6f", seconds);
  return text;
}

}  // namespace

bool hasSound(OutputFormat format) {
  return format == OutputFormat::Mov || format == OutputFormat::Mp4 || format == OutputFormat::Webm;
}

std::optional<Soundtrack> findSoundtrack(const MediaSource& source, double start, double seconds) {
  const std::string answer = askFfprobe(source,
                                        {"-select_streams", "a", "-show_entries",
                                         "stream=codec_name:format=start_time", "-of", "json"},
                                        "cannot read the sound of " + inQuotes(source.name))
                                 .text;
  const Json json = Json::parse(answer, nullptr, false);
  if (json.is_discarded()) return std::nullopt;
  Soundtrack sound{source.name, source.file, source.options, {}, start, seconds};
  for (const Json& stream : json.value("streams", Json::array())) {
    sound.codecs.push_back(stream.value("codec_name", "unknown"));
  }
  if (sound.codecs.empty()) return std::nullopt;
  // ffmpeg counts from the first stream, which may lie before 0 for a decoder to start with.
  const std::string first = json.value("format", Json::object()).value("start_time", "0");
  sound.start += std::max(0.0, -scene::parseNumber(first).value_or(0));
  return sound;
}

void appendSoundInput(std::vector<std::string>& command, const Soundtrack& sound) {
  if (sound.start > 0) command.insert(command.end(), {"-ss", secondsText(sound.start)});
  command.insert(command.end(), sound.options.begin(), sound.options.end());
  command.insert(command.end(), {"-t", secondsText(sound.seconds), "-i", sound.file});
}

void appendSoundOutput(std::vector<std::string>& command, const Soundtrack& sound,
                       OutputFormat format) {
  command.insert(command.end(), {"-map", "1:a", "-map_chapters", "-1"});
  // Leaves out copied packets that end before the start.
  if (sound.start > 0) command.insert(command.end(), {"-copypriorss:a", "0"});
  for (std::size_t i = 0; i < sound.codecs.size(); ++i) {
    const std::string stream = ":a:" + std::to_string(i);
    const std::string codec = "-c" + stream;
    if (takesAsItIs(format, sound.codecs[i])) {
      command.insert(command.end(), {codec, "copy"});
      continue;
    }
    // ffmpeg's -t counts from a stream's first sample, however late that is.
    const std::string cut = "atrim=end=" + secondsText(sound.seconds);
    if (format == OutputFormat::Webm) {
      // The encoder knows these layouts only.
      command.insert(command.end(), {codec, "libopus", "-b" + stream, "192k", "-filter" + stream,
                                     cut + ",aformat=channel_layouts=7.1|5.1|stereo|mono"});
    } else {
      command.insert(command.end(), {codec, "aac", "-b" + stream, "256k", "-filter" + stream, cut});
    }
  }
}

}  // namespace cli
