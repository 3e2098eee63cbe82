#include "platform/module_folder.h"

#include <dlfcn.h>

#include <climits>
#include <cstdlib>

namespace brisel {

const char kPathSeparator = '/';

std::string moduleFolder(std::string_view) {
  Dl_info info{};
  if (dladdr(&kPathSeparator, &info) == 0 || info.dli_fname == nullptr) return {};
  // The loader keeps the name it was given, which may be relative to an earlier working folder.
  char resolved[PATH_MAX];
  if (realpath(info.dli_fname, resolved) == nullptr) return {};
  const std::string path(resolved);
  return path.substr(0, path.rfind(kPathSeparator) + 1);
}

}  // namespace brisel
