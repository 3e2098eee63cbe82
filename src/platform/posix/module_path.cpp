#include "platform/module_path.h"

#include <dlfcn.h>

#include <climits>
#include <cstdlib>
#include <cstring>

namespace brisel {

const char kPathSeparator = '/';

std::size_t modulePath(char* path, std::size_t capacity) {
  Dl_info info{};
  if (dladdr(&kPathSeparator, &info) == 0 || info.dli_fname == nullptr) return 0;
  // The loader keeps the name it was given, which may be relative to a folder since left.
  char resolved[PATH_MAX];
  if (realpath(info.dli_fname, resolved) == nullptr) return 0;
  const std::size_t length = std::strlen(resolved);
  if (length + 1 > capacity) return 0;
  std::memcpy(path, resolved, length + 1);
  return length;
}

}  // namespace brisel
