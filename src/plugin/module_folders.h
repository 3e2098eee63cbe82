// Where the module's presets lie, derived from where the module itself lies.
#pragma once

#include <string>

namespace brisel {

/// Zero-terminated paths; all of them empty when the module's own path cannot serve.
struct ModuleFolders {
  static constexpr int kCapacity = 256;
  char moduleFolder[kCapacity] = {};      // with its trailing separator
  char presetRootFolder[kCapacity] = {};  // moduleFolder + "Corvane"
  char presetFolder[kCapacity] = {};      // presetRootFolder + "/Drizzen/"
  char presetFilePath[kCapacity] = {};    // presetFolder + "Drizzen.prs"
};

/// The folders below `moduleFolder`, which ends with a separator; empty ones where that is empty or
/// they do not fit.
ModuleFolders deriveFolders(const std::string& moduleFolder);

/// The folders of the module that is running; empty ones without memory, too.
ModuleFolders findFolders();

}  // namespace brisel
