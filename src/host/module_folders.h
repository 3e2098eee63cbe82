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

/// The folders beside the file `modulePath`, whatever it is called. A path without a folder, or one
/// whose folders do not fit, gives empty ones.
ModuleFolders deriveFolders(std::string_view modulePath);

/// The folders of the module that is running.
ModuleFolders findFolders();

}  // namespace brisel
