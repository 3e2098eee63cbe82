// Where the module's presets lie, derived from where the module itself lies.
#pragma once

#include <string_view>

namespace brisel {

/// Zero-terminated paths; all of them empty when the module's own path cannot serve.
struct ModuleFolders {
  static constexpr int kCapacity = 256;
  char moduleFolder[kCapacity] = {};      // with its trailing separator
  char presetRootFolder[kCapacity] = {};  // moduleFolder + "Corvane"
  char presetFolder[kCapacity] = {};      // presetRootFolder + "/Drizzen/"
  char presetFilePath[kCapacity] = {};    // presetFolder + "Drizzen.prs"
};

/// The folder is `modulePath` less the length of the module's own file name, whatever the file is
/// called. A path shorter than that name, or one whose folders do not fit, gives empty folders.
ModuleFolders deriveFolders(std::string_view modulePath);

/// The folders of the module that is running.
ModuleFolders findFolders();

}  // namespace brisel
