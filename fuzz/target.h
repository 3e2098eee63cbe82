// What a fuzz target is: one function that takes any bytes, and comes back.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace fuzz {

/// Each target defines it. Whatever the bytes are it returns, leaves nothing behind that another
/// input would meet, and does no more than a few milliseconds' work.
void runInput(std::span<const std::uint8_t> input);

/// Ends the program when `holds` is false; `promise` says what should have held.
inline void require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", promise);
  std::abort();
}

}  // namespace fuzz
