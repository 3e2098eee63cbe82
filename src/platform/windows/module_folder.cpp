#include "platform/module_folder.h"

#include "platform/windows/module_instance.h"

namespace brisel {

const char kPathSeparator = '\\';

std::string moduleFolder(std::string_view fileName) {
  char path[1024];
  const DWORD length = GetModuleFileNameA(moduleInstance(), path, sizeof path);
  if (length >= sizeof path || length < fileName.size()) return {};  // a longer path is cut
  return {path, length - fileName.size()};
}

}  // namespace brisel
