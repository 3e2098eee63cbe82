// The presets in the module's folder, by the names people use. What they set, only the module
// knows.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "presets/preset_index.h"

namespace cli {

// One row of thumbnails in the effect controls.
struct PresetRow {
  const char* section;  // of the index file
  const char* control;  // label of the control that shows it
};
inline constexpr std::array<PresetRow, 2> kPresetRows{
    {{brisel::kEmitterSection, "Emmiter presets"}, {brisel::kStarSection, "Stars presets"}}};

struct Preset {
  std::size_t row;  // of kPresetRows
  int cell;         // place in the row, from 0
  std::string name;
  std::filesystem::path file;
  std::filesystem::path thumbnail;
};

struct PresetIndex {
  std::filesystem::path file;
  std::vector<Preset> presets;                  // row by row
  std::array<int, kPresetRows.size()> cells{};  // in each row, those without a preset counted
};

// What the first comment of the preset's file says, in one line; empty when it says nothing.
std::string presetDescription(const Preset& preset);

// What is wrong with the preset's file, as the end of a sentence that begins with its name; empty
// when the effect can take it.
std::string presetFault(const Preset& preset);

// Has no presets when there is no index file that can be read.
PresetIndex readPresetIndex(const std::filesystem::path& module);

}  // namespace cli
