// Where the module itself lies, which is where its presets and documentation lie too.
#pragma once

#include <string>
#include <string_view>

namespace brisel {

/// The separator between folders in a path of this system.
extern const char kPathSeparator;

/// The folder of the module that is running, with its trailing separator; empty when the system
/// cannot tell. On Windows it is the module's path without its last characters, as many as
/// `fileName`, its published name, has. Elsewhere, where links give a module other names, it is the
/// folder of the file that they lead to.
std::string moduleFolder(std::string_view fileName);

}  // namespace brisel
