// The index of presets.
#include "presets/preset_index.h"

#include <string>

#include "target.h"

namespace {

void readSection(std::span<const std::uint8_t> input, const std::string& folder,
                 const char* section) {
  const auto isSound = [&folder](const std::string& path) {
    return path.empty() ||
           (path.size() <= 255 && path.size() > folder.size() && path.starts_with(folder));
  };
  for (const auto& [parameters, thumbnail] : brisel::parsePresetIndex(input, folder, section)) {
    fuzz::require(isSound(parameters) && isSound(thumbnail),
                  "a path is one of the folder, of 255 characters at most");
    fuzz::require(!parameters.empty() || thumbnail.empty(), "no thumbnail without parameters");
  }
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  readSection(input, "", brisel::kEmitterSection);
  readSection(input, std::string(250, '/'), brisel::kStarSection);
}
