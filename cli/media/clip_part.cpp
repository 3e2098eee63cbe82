#include "cli/media/clip_part.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include "cli/media/ffprobe.h"
#include "cli/media/media_source.h"
#include "cli/support/errors.h"
#include "scene/scene.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

using Json = nlohmann::json;

// The key of all that a comment says.
constexpr char kPart[] = "brisel-part";

// Throws WorkError naming the clip.
Json probe(const std::filesystem::path& file, const std::string& name, bool counting = false) {
  MediaSource clip;
  clip.file = mediaArgument(file);
  clip.options = openingOptions(kPartFormats);
  std::vector<std::string> questions = {"-select_streams", "v:0"};
  if (counting) questions.push_back("-count_packets");
  questions.insert(questions.end(),
                   {"-show_data_hash", "crc32", "-show_entries",
                    "stream=nb_frames,nb_read_packets,extradata_hash:format_tags", "-of", "json"});
  const std::string text =
      askFfprobe(clip, questions, "cannot read the clip " + inQuotes(name)).text;
  Json answer = Json::parse(text, nullptr, false);
  if (answer.is_discarded() || !answer.contains("streams") || answer["streams"].empty()) {
    throw WorkError("there is no clip in " + inQuotes(name));
  }
  // One kind of container does not say how many pictures there are: all of it must be read.
  const bool says = answer["streams"][0].contains("nb_frames");
  return says || counting ? answer : probe(file, name, true);
}

int countIn(const Json& answer) {
  const Json& stream = answer["streams"][0];
  const char* const key = stream.contains("nb_frames") ? "nb_frames" : "nb_read_packets";
  return scene::parseInteger(stream.value(key, "")).value_or(0);
}

// Frames a second, at which as many as there can be still end at a time that can be told.
constexpr double kSlowest = 1e-6;

// -1, which is wrong everywhere, for what is no whole number or too great a one.
int countFrom(const Json& value) {
  const bool isCount = value.is_number_unsigned() &&
                       value.get<std::uint64_t>() <= std::uint64_t{std::numeric_limits<int>::max()};
  return isCount ? value.get<int>() : -1;
}

// Containers spell the name of the comment in their own way.
std::string commentIn(const Json& answer) {
  const Json tags = answer.value("format", Json::object()).value("tags", Json::object());
  return tags.value("comment", tags.value("COMMENT", ""));
}

}  // namespace

std::string ClipPart::setting(const std::string& name) const {
  const auto found = std::ranges::find(settings, name, &Setting::first);
  return found == settings.end() ? "" : found->second;
}

bool isJoinable(OutputFormat format) {
  return format == OutputFormat::Mov || format == OutputFormat::Mp4 || format == OutputFormat::Webm;
}

std::string commentOf(const ClipPart& part) {
  Json settings = Json::array();
  for (const auto& [name, value] : part.settings) settings.push_back({name, value});
  const Json text = {{kPart,
                      {{"frames", {part.range.first, part.range.last}},
                       {"of", part.frames},
                       {"rate", {part.rate.frames, part.rate.seconds}},
                       {"settings", settings},
                       {"sound", part.sound}}}};
  return text.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<ClipPart> partFromComment(const std::string& comment) {
  try {
    const Json said = Json::parse(comment).at(kPart);
    ClipPart part;
    part.range = {countFrom(said.at("frames").at(0)), countFrom(said.at("frames").at(1))};
    part.frames = countFrom(said.at("of"));
    part.rate = {countFrom(said.at("rate").at(0)), countFrom(said.at("rate").at(1))};
    for (const Json& setting : said.at("settings")) {
      part.settings.emplace_back(setting.at(0), setting.at(1));
    }
    part.sound = said.at("sound");
    const bool makesSense = part.range.first >= 0 && part.range.first <= part.range.last &&
                            part.range.last < part.frames && part.frames <= scene::kMaxFrames &&
                            part.rate.frames > 0 && part.rate.seconds > 0 &&
                            part.rate.perSecond() >= kSlowest;
    return makesSense ? std::optional(part) : std::nullopt;
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

PartFile readPart(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    throw WorkError(inQuotes(file.string()) + " is a folder, a device or a pipe, not a clip");
  }
  const Json answer = probe(file, file.string());
  auto part = partFromComment(commentIn(answer));
  if (!part) {
    throw WorkError(inQuotes(file.string()) +
                    " does not say which part of a clip it is; \"brisel render\" with --frames "
                    "writes clips that do");
  }
  const int pictures = countIn(answer);
  if (pictures != part->range.count()) {
    throw WorkError(inQuotes(file.string()) + " is damaged: it has " + std::to_string(pictures) +
                    " pictures, not " + std::to_string(part->range.count()));
  }
  return {file, *std::move(part), answer["streams"][0].value("extradata_hash", ""), pictures};
}

int picturesIn(const std::filesystem::path& file, const std::string& name) {
  return countIn(probe(file, name));
}

}  // namespace cli
