#include "plugin/module_folders.h"

#include <cstring>
#include <new>
#include <string>

#include "platform/module_folder.h"
#include "plugin/resources/identity.h"

namespace brisel {
namespace {

void copyPath(const std::string& path, char (&to)[ModuleFolders::kCapacity]) {
  std::memcpy(to, path.c_str(), path.size() + 1);
}

}  // namespace

ModuleFolders deriveFolders(const std::string& moduleFolder) {
  ModuleFolders folders;
  if (moduleFolder.empty()) return folders;
  const std::string presetRootFolder = moduleFolder + "Corvane";
  const std::string presetFolder = presetRootFolder + kPathSeparator + "Drizzen" + kPathSeparator;
  const std::string presetFilePath = presetFolder + "Drizzen.prs";
  if (presetFilePath.size() >= ModuleFolders::kCapacity) return folders;
  copyPath(moduleFolder, folders.moduleFolder);
  copyPath(presetRootFolder, folders.presetRootFolder);
  copyPath(presetFolder, folders.presetFolder);
  copyPath(presetFilePath, folders.presetFilePath);
  return folders;
}

ModuleFolders findFolders() try {
  return deriveFolders(moduleFolder(kModuleFileName));
} catch (const std::bad_alloc&) {
  return {};
}

}  // namespace brisel
