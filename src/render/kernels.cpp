#include "render/kernels.h"

#include <cstring>

namespace brisel {
namespace {

struct Available {
  const Kernels* kernels[4] = {&kPlainKernels};
  std::size_t count = 1;
};

Available findAvailable() {
  Available found;
  [[maybe_unused]] const auto add = [&](const Kernels& kernels) {
    found.kernels[found.count++] = &kernels;
  };
#if defined(__aarch64__)
  add(kNeonKernels);
#elif defined(__x86_64__)
  add(kSse2Kernels);
#if defined(BRISEL_WIDE_KERNELS)
  if (!__builtin_cpu_supports("bmi2")) return found;
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) add(kAvx2Kernels);
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
      __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl")) {
    add(kAvx512Kernels);
  }
#endif
#endif
  return found;
}

}  // namespace

std::span<const Kernels* const> availableKernels() {
  static const Available available = findAvailable();
  return {available.kernels, available.count};
}

const Kernels& kernelsNamed(const char* name) {
  for (const Kernels* kernels : availableKernels()) {
    if (name != nullptr && std::strcmp(name, kernels->name) == 0) return *kernels;
  }
  return *availableKernels().back();
}

}  // namespace brisel
