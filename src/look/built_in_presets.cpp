#include "look/built_in_presets.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

// built_in_files.S
extern "C" const std::uint8_t kBriselBuiltInFiles[];
extern "C" const std::uint32_t kBriselBuiltInEnds[];

namespace brisel {
namespace {

constexpr std::string_view kNames[] = {
#define BUILT_IN_FILE(name) name,
#include "built_in_list.inc"
#undef BUILT_IN_FILE
};

std::optional<std::vector<std::uint8_t>> readBuiltInFile(const std::filesystem::path& file) {
  const auto found = std::ranges::find(kNames, file.filename().string());
  if (found == std::end(kNames)) return std::nullopt;
  const std::ptrdiff_t place = found - std::begin(kNames);
  const std::size_t begin = place == 0 ? 0 : kBriselBuiltInEnds[place - 1];
  return std::vector(kBriselBuiltInFiles + begin, kBriselBuiltInFiles + kBriselBuiltInEnds[place]);
}

}  // namespace

const scene::PresetLibrary& builtInPresets() {
  static const scene::PresetLibrary library({}, readBuiltInFile);
  return library;
}

}  // namespace brisel
