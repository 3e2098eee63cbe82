// A short number that tells whether two things are equal (FNV-1a, 64 bits). It finds out changes
// and mix-ups, not forgeries.
#pragma once

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

namespace cli {

class Digest {
 public:
  void add(std::string_view bytes) {
    for (const char byte : bytes) {
      sum_ = (sum_ ^ static_cast<unsigned char>(byte)) * 1099511628211u;
    }
  }

  template <class Number>
  requires std::is_arithmetic_v<Number>
  void add(Number number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    add(std::string_view(bytes, sizeof number));
  }

  // 16 hexadecimal digits.
  std::string text() const {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016" PRIx64, sum_);
    return digits;
  }

 private:
  std::uint64_t sum_ = 14695981039346656037u;
};

}  // namespace cli
