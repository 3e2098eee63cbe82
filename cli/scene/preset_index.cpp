#include "cli/scene/preset_index.h"

#include <optional>

#include "presets/parameter_file.h"
#include "presets/preset_index.h"

namespace cli {
namespace {

using brisel::ParameterFile;

ParameterFile readWithoutParameters(const Preset& preset) {
  return brisel::ReadParameterFile(preset.file.c_str(), [](std::string_view) { return 0; });
}

// The preset in a cell; nothing where the index names no usable file.
std::optional<Preset> presetOf(std::size_t row, int cell, const brisel::PresetFiles& files,
                               const std::string& folder) {
  if (files.parameters.empty()) return std::nullopt;
  const std::filesystem::path name = files.parameters.substr(folder.size());
  return Preset{row, cell, std::filesystem::path(name).replace_extension().string(),
                files.parameters, files.thumbnail};
}

}  // namespace

std::string presetDescription(const Preset& preset) {
  return readWithoutParameters(preset).description;
}

std::string presetFault(const Preset& preset) {
  switch (readWithoutParameters(preset).state) {
    case ParameterFile::State::Missing:
      return " is missing or cannot be read";
    case ParameterFile::State::OtherKind:
      return " is no parameter file: it does not begin with \"" +
             std::string(brisel::kParameterFileHeader) + "\", or ends there";
    default:
      return "";
  }
}

PresetIndex readPresetIndex(const std::filesystem::path& module) {
  // The module, too, looks in the folder of the file that a link leads to.
  const auto folder = std::filesystem::canonical(module).parent_path() / "Corvane" / "Drizzen";
  PresetIndex index{folder / "Drizzen.prs", {}, {}};
  const brisel::PresetFolders folders{index.file.string(), folder.string() + "/"};
  for (std::size_t row = 0; row < kPresetRows.size(); ++row) {
    for (const auto& files : brisel::ReadPresetIndex(folders, kPresetRows[row].section)) {
      const auto preset = presetOf(row, index.cells[row]++, files, folders.presetFolder);
      if (preset) index.presets.push_back(*preset);
    }
  }
  return index;
}

}  // namespace cli
