// Arrays in whole pages of memory, which start zeroed and take room only where they are touched.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/pages.h"

namespace brisel {

struct PageRelease {
  std::size_t bytes = 0;
  void operator()(void* block) const { releasePages(block, bytes); }
};

template <class T>
using PageArray = std::unique_ptr<T[], PageRelease>;

/// `count` zeroed elements, or null when the system has no room for them.
template <class T>
PageArray<T> allocatePageArray(std::size_t count) {
  const std::size_t bytes = count * sizeof(T);
  return PageArray<T>(static_cast<T*>(allocatePages(bytes)), PageRelease{bytes});
}

}  // namespace brisel
