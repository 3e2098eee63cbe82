#include "instructions.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace bench {

const brisel::Kernels& chosenKernels(int& argc, char** argv) {
  constexpr std::string_view kOption = "--instructions=";
  const auto available = brisel::availableKernels();
  char** const end = argv + argc;
  char** const given = std::find_if(
      argv, end, [&](const char* text) { return std::string_view(text).starts_with(kOption); });
  if (given == end) return *available.back();
  const std::string_view name = std::string_view(*given).substr(kOption.size());
  const auto chosen = std::ranges::find_if(
      available, [&](const brisel::Kernels* kernels) { return name == kernels->name; });
  if (chosen == available.end()) {
    std::fprintf(stderr, "%s: this processor has no such instruction set\n", *given);
    std::exit(2);
  }
  std::copy(given + 1, end + 1, given);  // with the null at the end
  --argc;
  return **chosen;
}

}  // namespace bench
