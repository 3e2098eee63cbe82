#include "scene/text/printable.h"

#include <cstdio>

namespace scene {
namespace {

constexpr std::size_t kLongest = 4000;  // in bytes

bool continuesCharacter(char byte) {
  return (byte & 0xC0) == 0x80;
}

std::string withoutControls(std::string_view text) {
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto code = static_cast<unsigned char>(text[i]);
    // The second set of them takes two bytes in UTF-8.
    const bool isSecondSet = code == 0xC2 && i + 1 < text.size() &&
                             static_cast<unsigned char>(text[i + 1]) < 0xA0 &&
                             continuesCharacter(text[i + 1]);
    if (isSecondSet) code = static_cast<unsigned char>(text[++i]);
    if (isSecondSet || code < 0x20 || code == 0x7F) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\x%02X", code);
      shown += escape;
    } else {
      shown += text[i];
    }
  }
  return shown;
}

}  // namespace

std::string printable(std::string_view text) {
  if (text.size() <= kLongest) return withoutControls(text);
  std::size_t start = kLongest / 2;
  std::size_t end = text.size() - kLongest / 2;
  while (start > 0 && continuesCharacter(text[start])) --start;
  while (end < text.size() && continuesCharacter(text[end])) ++end;
  return withoutControls(text.substr(0, start)) + " [...] " + withoutControls(text.substr(end));
}

}  // namespace scene
