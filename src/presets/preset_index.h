// The index of presets: which there are, in which row, with which files.
#pragma once

#include "presets/preset_list.h"

namespace brisel {

/// Where the presets lie. Zero-terminated paths.
struct PresetFolders {
  const char* presetFilePath;  // the index
  const char* presetFolder;    // with its trailing separator; the files that the index names
};

/// Fills `list` with the entries of the index's first section whose header begins with
/// `sectionName`, thumbnails included. The list is empty when there is no such index or section.
/// An entry whose file names are broken or too long stays listed without them.
void ReadPresetIndex(const PresetFolders& folders, const char* sectionName, PresetList& list);

}  // namespace brisel
