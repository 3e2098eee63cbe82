#include "platform/library_at.h"

#include <dlfcn.h>

namespace brisel {

std::string libraryAt(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return {};
  const std::string path(info.dli_fname);
  return path.substr(path.rfind('/') + 1);
}

}  // namespace brisel
