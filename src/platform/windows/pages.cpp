#include "platform/pages.h"

#include <windows.h>

namespace brisel {

void* allocatePages(std::size_t bytes) {
  if (bytes == 0) return nullptr;
  return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void releasePages(void* block, std::size_t /*bytes*/) {
  if (block != nullptr) VirtualFree(block, 0, MEM_RELEASE);
}

}  // namespace brisel
