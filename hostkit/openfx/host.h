// hostkit: a small OpenFX host, which loads a built plug-in and plays the host's side strictly.
#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "openfx/api/openfx.h"

namespace hostkit {

/// What hosts in the field do otherwise. Changed between actions.
struct HostManners {
  bool lacksMessages = false;
  bool lacksParameters = false;    // the whole suite
  bool ignoresTime = false;        // in getValueAtTime: the values are those of now
  bool failsTime = false;          // getValueAtTime answers an error
  std::atomic<double> now{0};      // the time that a person looks at
  bool failsValues = false;        // getters of parameters answer an error
  std::atomic<int> failsEvery{0};  // n-th call of any suite; 0: none
  std::string refusedParameter;    // that paramDefine does not take
  std::string lackedProperty;      // that no object has
};

/// Ends after all that plug-ins have made in it.
class OpenFxHost {
 public:
  OpenFxHost();
  ~OpenFxHost();

  OfxHost* record() { return &record_; }
  HostManners manners;

  /// Notes what a plug-in may not do.
  void complain(const std::string& fault);
  std::vector<std::string> complaints() const;

  /// Whether the call that begins is one that fails. Spoils the text that the last call lent.
  bool failsNow();
  int calls() const { return calls_; }  // of all suites
  /// The n-th of them from now on fails, 1 being the next; 0: none.
  void failOnlyCall(int nth) { failingCall_ = nth > 0 ? calls_ + nth : 0; }

 private:
  std::unique_ptr<OfxPropertySetStruct> description_;
  OfxHost record_;
  std::atomic<int> calls_{0};
  std::atomic<int> failingCall_{0};
  mutable std::mutex mutex_;
  std::vector<std::string> complaints_;
};

/// Text that is good until the calling thread's next call into a suite.
char* lentText(const std::string& text);

/// The built plug-in, loaded for as long as this lives.
class OpenFxBinary {
 public:
  explicit OpenFxBinary(const std::filesystem::path& file);  // throws Error
  OpenFxBinary(const OpenFxBinary&) = delete;
  OpenFxBinary& operator=(const OpenFxBinary&) = delete;
  ~OpenFxBinary();

  int count() const { return count_; }
  OfxPlugin* plugin(int nth) const { return get_(nth); }

 private:
  void* library_;
  int count_ = 0;
  OfxPlugin* (*get_)(int) = nullptr;
};

}  // namespace hostkit
