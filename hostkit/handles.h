// hostkit: the host's relocatable memory blocks, kept strictly: a block moves whenever it is locked
// for the first time, fresh memory is not zero, and every misuse is counted.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "plugin/sdk/base_types.h"

namespace hostkit {

class HandleTable {
 public:
  HandleTable() = default;
  HandleTable(const HandleTable&) = delete;
  HandleTable& operator=(const HandleTable&) = delete;

  PF_Handle allocate(std::uint64_t size);  // null when refused
  void* lock(PF_Handle handle);  // null when refused or the handle is not live; locks nest
  void unlock(PF_Handle handle);
  void dispose(PF_Handle handle);
  std::uint64_t size(PF_Handle handle);                  // bytes; 0 when the handle is not live
  bool resize(PF_Handle handle, std::uint64_t newSize);  // refused while locked

  // The n-th allocation from now (1 is the next) gives no memory; 0 cancels this.
  void refuseAllocation(int nth) { refusedAllocation_ = nth; }
  void refuseLocks(bool refuse) { refuseLocks_ = refuse; }

  int liveHandles() const;
  int outstandingLocks() const;
  bool balanced() const;  // no lock outstanding and no misuse; handles may be live

 private:
  struct Block {
    void* data = nullptr;  // what the handle points to
    std::vector<std::uint8_t> bytes;
    int locks = 0;
    bool disposed = false;
  };

  Block* find(PF_Handle handle);  // counts a misuse when it is not a live one

  // Disposed blocks stay listed, so that a stale handle is recognized and never given out again.
  std::unordered_map<PF_Handle, std::unique_ptr<Block>> blocks_;
  int refusedAllocation_ = 0;
  bool refuseLocks_ = false;
  int staleHandles_ = 0;     // uses of a disposed handle
  int unknownHandles_ = 0;   // uses of one that is not from here
  int unbalancedLocks_ = 0;  // unlocked too often, disposed locked
};

}  // namespace hostkit
