#include "platform/pages.h"

#include <sys/mman.h>

namespace brisel {

void* allocatePages(std::size_t bytes) {
  if (bytes == 0) return nullptr;
  void* block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return block == MAP_FAILED ? nullptr : block;
}

void releasePages(void* block, std::size_t bytes) {
  if (block != nullptr) munmap(block, bytes);
}

}  // namespace brisel
