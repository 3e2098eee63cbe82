// A host handle that stays locked for a scope.
#pragma once

#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// Whether the host gives all the handle callbacks.
inline bool hasHandleCallbacks(const PF_InData& in) {
  const PF_UtilCallbacks* utils = in.utils;
  return utils != nullptr && utils->host_new_handle != nullptr &&
         utils->host_lock_handle != nullptr && utils->host_unlock_handle != nullptr &&
         utils->host_dispose_handle != nullptr;
}

class LockedHandle {
 public:
  /// `handle` may be null; get() is then null, as when the host refuses the lock or gives no
  /// callbacks for handles.
  LockedHandle(const PF_InData& in, PF_Handle handle) : in_(in), handle_(handle) {
    if (handle_ != nullptr && hasHandleCallbacks(in)) block_ = in.utils->host_lock_handle(handle_);
  }
  ~LockedHandle() {
    if (block_ != nullptr) in_.utils->host_unlock_handle(handle_);
  }
  LockedHandle(const LockedHandle&) = delete;
  LockedHandle& operator=(const LockedHandle&) = delete;

  void* get() const { return block_; }

 private:
  const PF_InData& in_;
  PF_Handle handle_;
  void* block_ = nullptr;
};

}  // namespace brisel
