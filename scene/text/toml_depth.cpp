#include "scene/text/toml_depth.h"

#include <algorithm>
#include <string>

namespace scene {
namespace {

// Where the text in quotes ends that begins there: behind its last quote, or at the end of all.
std::size_t endOfText(std::string_view toml, std::size_t start) {
  const char quote = toml[start];
  const bool isLong = toml.substr(start, 3) == std::string(3, quote);
  const std::string end(isLong ? 3 : 1, quote);
  for (std::size_t at = start + end.size(); at < toml.size(); ++at) {
    if (toml[at] == '\\' && quote == '"') {
      ++at;
    } else if (toml.substr(at, end.size()) == end) {
      return at + end.size();
    } else if (toml[at] == '\n' && !isLong) {
      return at;
    }
  }
  return toml.size();
}

}  // namespace

int lineOfTooDeepKey(std::string_view toml) {
  constexpr std::string_view kBetweenKeys = "\n=,[]{}";
  int parts = 1;
  for (std::size_t at = 0; at < toml.size();) {
    const char character = toml[at];
    if (character == '"' || character == '\'') {
      at = endOfText(toml, at);
      continue;
    }
    if (character == '#') {
      at = std::min(toml.find('\n', at), toml.size());
      continue;
    }
    if (character == '.' && ++parts > kMaxKeyParts) {
      return 1 + static_cast<int>(std::count(toml.begin(), toml.begin() + at, '\n'));
    }
    if (kBetweenKeys.find(character) != kBetweenKeys.npos) parts = 1;
    ++at;
  }
  return 0;
}

}  // namespace scene
