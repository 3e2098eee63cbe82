// Where the module itself lies, which is where its presets and documentation lie too.
#pragma once

#include <cstddef>

namespace brisel {

/// The separator between folders in a path of this system.
extern const char kPathSeparator;

/// Writes the full path of the file this module was loaded from into `path`, zero-terminated.
/// Returns its length, or 0 when the system cannot tell or the path does not fit in `capacity`.
std::size_t modulePath(char* path, std::size_t capacity);

}  // namespace brisel
