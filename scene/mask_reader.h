// What a scene file says about its mask.
#pragma once

#include "scene/file_access.h"
#include "scene/mask.h"
#include "scene/toml_reader.h"

namespace scene {

/// The table [mask], or [layer.mask], as the entry's key has it. Throws WorkError naming the file,
/// the line and the key.
Mask readMaskTable(const TomlReader& reader, const TomlEntry& entry);

/// An entry such as mask = "logo.svg#star": a path of an SVG file, relative to the scene file.
Mask readMaskReference(const TomlReader& reader, const TomlEntry& entry, const FileAccess& access);

}  // namespace scene
