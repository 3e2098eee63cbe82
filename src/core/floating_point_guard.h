// The floating-point environment that the arithmetic is defined in.
#pragma once

#if defined(__SSE2__)
#include <xmmintrin.h>
#else
#include <cfenv>
#endif

namespace brisel {

/// Sets the default environment (round to nearest, no flushing of small numbers to zero) for a
/// scope and gives the host its own back, so that the same bytes come out under every host.
class FloatingPointGuard {
 public:
  FloatingPointGuard(const FloatingPointGuard&) = delete;
  FloatingPointGuard& operator=(const FloatingPointGuard&) = delete;

#if defined(__SSE2__)
  // All arithmetic is that of the vector registers, whose control word not every system's fesetenv
  // brings back to its default.
  FloatingPointGuard() {
    _mm_setcsr(_MM_MASK_MASK | _MM_ROUND_NEAREST | _MM_FLUSH_ZERO_OFF);
  }
  ~FloatingPointGuard() {
    _mm_setcsr(hostEnvironment_);
  }

 private:
  unsigned hostEnvironment_ = _mm_getcsr();
#else
  FloatingPointGuard() {
    std::fegetenv(&hostEnvironment_);
    std::fesetenv(FE_DFL_ENV);
  }
  ~FloatingPointGuard() {
    std::fesetenv(&hostEnvironment_);
  }

 private:
  std::fenv_t hostEnvironment_;
#endif
};

}  // namespace brisel
