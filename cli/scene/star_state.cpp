#include "cli/scene/star_state.h"

#include <libdeflate.h>

#include <bit>
#include <nlohmann/json.hpp>
#include <string_view>

#include "cli/support/errors.h"
#include "scene/preset_library.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;
using Bytes = std::vector<std::uint8_t>;

constexpr std::string_view kMark = "brisel state ";
constexpr std::string_view kVersion = "1";
constexpr std::string_view kByteOrder =
    std::endian::native == std::endian::little ? "little" : "big";
constexpr std::size_t kChecksumDigits = 8;
// As many layers and stars as there can be take less.
constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 28;
constexpr std::size_t kMostBytesOfHead = 1 << 20;

std::string checksumOf(std::string_view bytes) {
  char digits[kChecksumDigits + 1];
  std::snprintf(digits, sizeof digits, "%08x", libdeflate_crc32(0, bytes.data(), bytes.size()));
  return digits;
}

Json headOf(const StarState& state) {
  Json scene = Json::object();
  for (const auto& [name, value] : state.facts) scene[name] = value;
  Json sizes = Json::array();
  for (const Bytes& layer : state.layers) sizes.push_back(layer.size());
  return {{"byteOrder", kByteOrder}, {"frame", state.frame}, {"scene", scene}, {"layers", sizes}};
}

[[noreturn]] void refuse(const std::filesystem::path& file, const std::string& why) {
  throw WorkError("the state " + inQuotes(file.string()) + " " + why + kMakeStates);
}

// The bytes up to the character, which are taken off the front together with it.
std::optional<std::string_view> takeUpTo(char end, std::string_view& rest) {
  const std::size_t length = rest.find(end);
  if (length == rest.npos) return std::nullopt;
  const std::string_view taken = rest.substr(0, length);
  rest.remove_prefix(length + 1);
  return taken;
}

// False where the head or the sizes in it are not those of a state.
bool parse(const Json& head, std::string_view rest, StarState& state) {
  const auto has = [&](const char* key, auto kind) {
    return head.contains(key) && (head[key].*kind)();
  };
  if (!has("frame", &Json::is_number_unsigned) || !has("scene", &Json::is_object) ||
      !has("layers", &Json::is_array)) {
    return false;
  }
  const auto frame = head["frame"].get<std::uint64_t>();
  if (frame > scene::kMaxFrames || head["layers"].size() > scene::kMaxLayers) return false;
  state.frame = static_cast<int>(frame);
  for (const auto& [name, value] : head["scene"].items()) {
    if (!value.is_string()) return false;
    state.facts.push_back({name, value.get<std::string>()});
  }
  for (const Json& size : head["layers"]) {
    if (!size.is_number_unsigned() || size.get<std::uint64_t>() > rest.size()) return false;
    const std::string_view layer = rest.substr(0, size.get<std::size_t>());
    rest.remove_prefix(layer.size());
    state.layers.emplace_back(layer.begin(), layer.end());
  }
  return rest.empty();
}

}  // namespace

std::vector<std::uint8_t> bytesOf(const StarState& state) {
  std::string bytes =
      std::string(kMark) + std::string(kVersion) + "\n" + headOf(state).dump() + "\n";
  for (const Bytes& layer : state.layers) bytes.append(layer.begin(), layer.end());
  bytes += checksumOf(bytes);
  return {bytes.begin(), bytes.end()};
}

StarState readState(const std::filesystem::path& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error) {
    throw WorkError("cannot read the state " + inQuotes(file.string()) + ": " + error.message());
  }
  if (size > kMostBytes) refuse(file, "is no state of stars");
  const auto content = scene::readFileOfSystem(file);
  if (!content) throw WorkError("cannot read the state " + inQuotes(file.string()));

  const std::string_view all(reinterpret_cast<const char*>(content->data()), content->size());
  if (!all.starts_with(kMark)) refuse(file, "is no state of stars");
  std::string_view rest = all.substr(kMark.size());
  const auto version = takeUpTo('\n', rest);
  if (version && *version != kVersion) refuse(file, "is of another version");
  if (!version || rest.size() < kChecksumDigits) refuse(file, "ends early");
  const std::string_view checksum = all.substr(all.size() - kChecksumDigits);
  rest.remove_suffix(kChecksumDigits);
  if (checksumOf(all.substr(0, all.size() - kChecksumDigits)) != checksum) {
    refuse(file, "is damaged or not complete");
  }
  const auto headLine = takeUpTo('\n', rest);
  if (headLine && headLine->size() > kMostBytesOfHead) refuse(file, "is damaged");
  const Json head = Json::parse(headLine.value_or(""), nullptr, false);
  if (head.is_discarded() || !head.is_object()) refuse(file, "is damaged");
  if (head.value("byteOrder", Json()) != kByteOrder) {
    refuse(file, "was saved on a machine of another byte order");
  }
  StarState state;
  state.file = file;
  if (!parse(head, rest, state)) refuse(file, "is damaged");
  return state;
}

}  // namespace cli
