// The floating-point environment that the arithmetic is defined in.
#pragma once

#if defined(__SSE2__)
#include <xmmintrin.h>
#elif defined(__aarch64__)
#include <cstdint>
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

  // Where all arithmetic is that of the vector registers, their control word is set by itself: not
  // every system's fesetenv brings all of it back to its default.
#if defined(__SSE2__)
  FloatingPointGuard() {
    _mm_setcsr(_MM_MASK_MASK | _MM_ROUND_NEAREST | _MM_FLUSH_ZERO_OFF);
  }
  ~FloatingPointGuard() {
    _mm_setcsr(hostEnvironment_);
  }

 private:
  unsigned hostEnvironment_ = _mm_getcsr();
#elif defined(__aarch64__)
  FloatingPointGuard() {
    asm volatile("mrs %0, fpcr" : "=r"(hostEnvironment_));
    setControl(0);
  }
  ~FloatingPointGuard() {
    setControl(hostEnvironment_);
  }

 private:
  static void setControl(std::uint64_t control) {
    asm volatile("msr fpcr, %0" : : "r"(control) : "memory");
  }
  std::uint64_t hostEnvironment_;
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
