#include "host/module_folders.h"

#include <cstring>
#include <string>

#include "platform/module_path.h"

namespace brisel {
namespace {

void copyPath(const std::string& path, char (&to)[ModuleFolders::kCapacity]) {
  std::memcpy(to, path.c_str(), path.size() + 1);
}

}  // namespace

ModuleFolders deriveFolders(std::string_view modulePath) {
  ModuleFolders folders;
  const std::size_t separator = modulePath.rfind(kPathSeparator);
  if (separator == std::string_view::npos) return folders;
  const std::string moduleFolder(modulePath.substr(0, separator + 1));
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

ModuleFolders findFolders() {
  char path[1024];
  const std::size_t length = modulePath(path, sizeof path);
  return deriveFolders({path, length});
}

}  // namespace brisel
