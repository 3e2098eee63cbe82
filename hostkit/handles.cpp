#include "hostkit/handles.h"

#include <algorithm>

namespace hostkit {

namespace {

// Memory a host hands out holds whatever was there before.
constexpr std::uint8_t kStaleByte = 0xCD;

}  // namespace

PF_Handle HandleTable::allocate(std::uint64_t size) {
  if (refusedAllocation_ > 0 && --refusedAllocation_ == 0) return nullptr;
  auto block = std::make_unique<Block>();
  block->bytes.assign(size, kStaleByte);
  block->data = block->bytes.data();
  const PF_Handle handle = &block->data;
  blocks_.emplace(handle, std::move(block));
  return handle;
}

void* HandleTable::lock(PF_Handle handle) {
  Block* block = find(handle);
  if (block == nullptr || refuseLocks_) return nullptr;
  if (block->locks == 0) {
    // A copy made before the old bytes are freed is sure to lie elsewhere.
    std::vector<std::uint8_t> moved(block->bytes);
    block->bytes.swap(moved);
    block->data = block->bytes.data();
  }
  ++block->locks;
  return block->data;
}

void HandleTable::unlock(PF_Handle handle) {
  Block* block = find(handle);
  if (block == nullptr) return;
  if (block->locks == 0) {
    ++unbalancedLocks_;
  } else {
    --block->locks;
  }
}

void HandleTable::dispose(PF_Handle handle) {
  Block* block = find(handle);
  if (block == nullptr) return;
  if (block->locks > 0) ++unbalancedLocks_;
  block->disposed = true;
  block->locks = 0;
  block->bytes = {};
  block->data = nullptr;
}

std::uint64_t HandleTable::size(PF_Handle handle) {
  const Block* block = find(handle);
  return block == nullptr ? 0 : block->bytes.size();
}

bool HandleTable::resize(PF_Handle handle, std::uint64_t newSize) {
  Block* block = find(handle);
  if (block == nullptr || block->locks > 0) return false;
  block->bytes.resize(newSize, kStaleByte);
  block->data = block->bytes.data();
  return true;
}

int HandleTable::liveHandles() const {
  return static_cast<int>(std::count_if(blocks_.begin(), blocks_.end(),
                                        [](const auto& entry) { return !entry.second->disposed; }));
}

int HandleTable::outstandingLocks() const {
  int locks = 0;
  for (const auto& [handle, block] : blocks_) locks += block->locks;
  return locks;
}

bool HandleTable::balanced() const {
  return outstandingLocks() == 0 && staleHandles_ == 0 && unknownHandles_ == 0 &&
         unbalancedLocks_ == 0;
}

HandleTable::Block* HandleTable::find(PF_Handle handle) {
  const auto found = blocks_.find(handle);
  if (found == blocks_.end()) {
    ++unknownHandles_;
    return nullptr;
  }
  if (found->second->disposed) {
    ++staleHandles_;
    return nullptr;
  }
  return found->second.get();
}

}  // namespace hostkit
