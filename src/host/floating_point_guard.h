// The floating-point environment that the arithmetic is defined in.
#pragma once

#include <cfenv>

namespace brisel {

/// Sets the default environment (round to nearest, no flushing of small numbers to zero) for a
/// scope and gives the host its own back, so that the same bytes come out under every host.
class FloatingPointGuard {
 public:
  FloatingPointGuard() {
    std::fegetenv(&hostEnvironment_);
    std::fesetenv(FE_DFL_ENV);
  }
  ~FloatingPointGuard() { std::fesetenv(&hostEnvironment_); }
  FloatingPointGuard(const FloatingPointGuard&) = delete;
  FloatingPointGuard& operator=(const FloatingPointGuard&) = delete;

 private:
  std::fenv_t hostEnvironment_;
};

}  // namespace brisel
