#include "platform/pages.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>

namespace brisel {
namespace {

/// Blocks of fewer bytes come from the heap: the system takes longer to map them than to fill them.
constexpr std::size_t kLeastMapped = std::size_t{128} << 10;
constexpr std::size_t kPage = 4096;

}  // namespace

void* allocatePages(std::size_t bytes) {
  if (bytes == 0) return nullptr;
  if (bytes < kLeastMapped) {
    const std::size_t whole = (bytes + kPage - 1) / kPage * kPage;
    void* small = std::aligned_alloc(kPage, whole);
    return small == nullptr ? nullptr : std::memset(small, 0, whole);
  }
  void* block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return block == MAP_FAILED ? nullptr : block;
}

void releasePages(void* block, std::size_t bytes) {
  if (bytes < kLeastMapped) {
    std::free(block);
  } else if (block != nullptr) {
    munmap(block, bytes);
  }
}

}  // namespace brisel
