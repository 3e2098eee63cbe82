// Whole pages of memory from the operating system, for the star array and the per-frame maps: large
// blocks that must start zeroed and go back to the system as soon as they are released. Small ones
// may stay with the process, which is quicker.
#pragma once

#include <cstddef>

namespace brisel {

/// Returns `bytes` bytes of zeroed, page-aligned memory, or null when `bytes` is 0 or there
/// is no memory. The caller owns it and hands it back with releasePages.
void* allocatePages(std::size_t bytes);

/// Releases a block from allocatePages; `bytes` is the size that was asked for. Null is ignored.
void releasePages(void* block, std::size_t bytes);

}  // namespace brisel
