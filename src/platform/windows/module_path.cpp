#include "platform/module_path.h"

#include "platform/windows/module_instance.h"

namespace brisel {

const char kPathSeparator = '\\';

std::size_t modulePath(char* path, std::size_t capacity) {
  const DWORD length = GetModuleFileNameA(moduleInstance(), path, static_cast<DWORD>(capacity));
  return length < capacity ? length : 0;  // a path that does not fit is cut
}

}  // namespace brisel
