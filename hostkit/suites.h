// hostkit: the suites a host offers, and a record of what a module does with them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

namespace hostkit {

struct SuiteName {
  std::string name;
  std::int32_t version;

  bool operator<(const SuiteName& other) const {
    return std::tie(name, version) < std::tie(other.name, other.version);
  }
};

class SuiteLedger {
 public:
  // Offers a table of functions, which must outlive the ledger, in place of one of that name.
  void offer(const SuiteName& suite, const void* table) { tables_[suite] = table; }
  // Refuses the suite from now on; who holds it still holds it.
  void withdraw(const SuiteName& suite) { tables_.erase(suite); }
  // The n-th acquisition from now (1 is the next) is refused; 0 cancels this.
  void refuseAcquisition(int nth) { refusedAcquisition_ = nth; }

  // Behind the basic suite.
  const void* acquire(const SuiteName& suite);  // null when refused
  bool release(const SuiteName& suite);         // false when it is not held
  // Behind the other suites: a call of one of the suite's functions.
  void noteCall(const SuiteName& suite);

  int acquisitions() const { return acquisitions_; }  // all requests, refused ones too
  int held() const;                                   // acquired and not yet released
  int callsUnheld() const { return callsUnheld_; }    // into suites that are not held
  bool balanced() const;                              // nothing held and no misuse

 private:
  std::map<SuiteName, const void*> tables_;
  std::map<SuiteName, int> holds_;
  int refusedAcquisition_ = 0;
  int acquisitions_ = 0;
  int unbalancedReleases_ = 0;  // of suites that are not held
  int callsUnheld_ = 0;
};

}  // namespace hostkit
