// The index of presets: their names, their rows and their files.
#pragma once

#include <string>
#include <vector>

namespace brisel {

/// The sections of the index: what emits stars, and how they look.
inline constexpr char kEmitterSection[] = "Emmiter";
inline constexpr char kStarSection[] = "Geometry";

/// Where the presets lie.
struct PresetFolders {
  std::string presetFilePath;  // the index
  std::string presetFolder;    // with its trailing separator; the files that the index names
};

/// The files of one preset, as full paths of at most 255 characters; an empty one is not there.
struct PresetFiles {
  std::string parameters;
  std::string thumbnail;
};

/// The entries of the index's first section whose header begins with `sectionName`. Empty when
/// there is no such index or section, or no memory for them. An entry whose file names are broken
/// or too long is listed without them, as it takes a place in the row.
std::vector<PresetFiles> ReadPresetIndex(const PresetFolders& folders, const char* sectionName);

}  // namespace brisel
