// A target as libFuzzer knows it.
#include <cstddef>
#include <cstdint>

#include "target.h"

// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer looks for this name
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::runInput({data, size});
  return 0;
}
