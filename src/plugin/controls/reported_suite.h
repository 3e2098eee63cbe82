// A suite that the user is told about when it is missing.
#pragma once

#include <cstring>
#include <optional>

#include "plugin/sdk/codes.h"
#include "plugin/sdk/suite_handle.h"

namespace brisel {

/// Asks the host to show `message` and keeps the first error.
template <std::size_t kSize>
void reportError(const char (&message)[kSize], PF_Err code, PF_OutData& out, PF_Err& error) {
  static_assert(kSize <= sizeof out.return_msg);
  std::memcpy(out.return_msg, message, kSize);
  out.out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
  if (error == PF_Err_NONE) error = code;
}

/// Holds a suite for a scope; what goes wrong goes to `error`, which must outlive it. Once an error
/// has happened nothing more is acquired.
template <class Suite>
class ReportedSuite {
 public:
  ReportedSuite(const PF_InData& in, PF_OutData& out, PF_Err& error, const char* name,
                std::int32_t version)
      : out_(out), error_(error) {
    if (error_ != PF_Err_NONE) return;
    suite_.emplace(in, name, version);
    if (suite_->get() != nullptr) return;
    if (suite_->error() != 0 || in.pica_basicP == nullptr) {
      const PF_Err code = suite_->error() != 0 ? suite_->error() : PF_Err_INVALID_CALLBACK;
      reportError("Not able to acquire AEFX Suite.", code, out_, error_);
    } else {
      reportError("NULL suite pointer passed to AEFX_AcquireDrawbotSuites",
                  PF_Err_UNRECOGNIZED_PARAM_TYPE, out_, error_);
    }
  }
  ~ReportedSuite() {
    if (!suite_) return;
    const SPErr code = suite_->release();
    if (code != 0) reportError("Not able to release AEFX Suite.", code, out_, error_);
  }
  ReportedSuite(const ReportedSuite&) = delete;
  ReportedSuite& operator=(const ReportedSuite&) = delete;

  /// Only of a suite that was acquired.
  const Suite* operator->() const { return suite_->get(); }

 private:
  PF_OutData& out_;
  PF_Err& error_;
  std::optional<SuiteHandle<Suite>> suite_;
};

}  // namespace brisel
