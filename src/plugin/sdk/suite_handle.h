// A suite of the host's, held for a scope.
#pragma once

#include <cstdint>

#include "plugin/sdk/in_out_data.h"
#include "plugin/sdk/suites.h"

namespace brisel {

/// Acquires a suite and releases it again. get() is null when the host does not offer it.
template <class Suite>
class SuiteHandle {
 public:
  SuiteHandle(const PF_InData& in, const char* name, std::int32_t version)
      : basic_(in.pica_basicP), name_(name), version_(version) {
    if (basic_ == nullptr) return;
    const void* suite = nullptr;
    error_ = basic_->AcquireSuite(name_, version_, &suite);
    if (error_ == 0) suite_ = static_cast<const Suite*>(suite);
  }
  ~SuiteHandle() { release(); }
  SuiteHandle(const SuiteHandle&) = delete;
  SuiteHandle& operator=(const SuiteHandle&) = delete;

  const Suite* get() const { return suite_; }
  const Suite* operator->() const { return suite_; }

  /// What the host answered to the acquisition; 0 also when it has no suites at all.
  SPErr error() const { return error_; }

  /// Gives the suite back before the scope ends; returns the host's answer.
  SPErr release() {
    if (suite_ == nullptr) return 0;
    suite_ = nullptr;
    return basic_->ReleaseSuite(name_, version_);
  }

 private:
  const SPBasicSuite* basic_;
  const char* name_;
  std::int32_t version_;
  SPErr error_ = 0;
  const Suite* suite_ = nullptr;
};

}  // namespace brisel
