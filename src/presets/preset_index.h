// The index of presets: their names, their rows and their files.
#pragma once

#include <cstdint>
#include <span>
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

/// The entries of the first section of an index whose header begins with `sectionName`; none when
/// there is no such section, 100,000 at most. Their paths begin with `presetFolder`, which
/// ends with a separator or is empty. An entry whose file names are broken or too long is listed
/// without them, as it takes a place in the row. Throws std::bad_alloc.
std::vector<PresetFiles> parsePresetIndex(std::span<const std::uint8_t> bytes,
                                          const std::string& presetFolder, const char* sectionName);

/// The same of the index that lies there; nothing when it cannot be read.
std::vector<PresetFiles> ReadPresetIndex(const PresetFolders& folders, const char* sectionName);

}  // namespace brisel
