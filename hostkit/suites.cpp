#include "hostkit/suites.h"

namespace hostkit {

const void* SuiteLedger::acquire(const SuiteName& suite) {
  ++acquisitions_;
  if (refusedAcquisition_ > 0 && --refusedAcquisition_ == 0) return nullptr;
  const auto offered = tables_.find(suite);
  if (offered == tables_.end()) return nullptr;
  ++holds_[suite];
  return offered->second;
}

bool SuiteLedger::release(const SuiteName& suite) {
  int& holds = holds_[suite];
  if (holds == 0) {
    ++unbalancedReleases_;
    return false;
  }
  --holds;
  return true;
}

void SuiteLedger::noteCall(const SuiteName& suite) {
  if (holds_[suite] == 0) ++callsUnheld_;
}

int SuiteLedger::held() const {
  int held = 0;
  for (const auto& [suite, holds] : holds_) held += holds;
  return held;
}

bool SuiteLedger::balanced() const {
  return held() == 0 && unbalancedReleases_ == 0 && callsUnheld_ == 0;
}

}  // namespace hostkit
