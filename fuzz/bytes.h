// Numbers and choices out of an input's bytes, for targets whose subject is no text or file.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <type_traits>

namespace fuzz {

/// Takes from the front. Bytes that are no longer there count as 0, so that every input serves, and
/// a longer one adds to what a shorter one does.
class Bytes {
 public:
  explicit Bytes(std::span<const std::uint8_t> input) : left_(input) {}

  bool empty() const { return left_.empty(); }

  /// Up to `count` bytes.
  std::span<const std::uint8_t> take(std::size_t count) {
    const auto taken = left_.first(std::min(count, left_.size()));
    left_ = left_.subspan(taken.size());
    return taken;
  }
  std::span<const std::uint8_t> takeAll() { return take(left_.size()); }

  /// Every value of the type, low byte first.
  template <class Integer>
  Integer integer() {
    static_assert(std::is_integral_v<Integer>);
    std::uint64_t value = 0;
    int shift = 0;
    for (const std::uint8_t byte : take(sizeof(Integer))) {
      value |= std::uint64_t{byte} << shift;
      shift += 8;
    }
    return static_cast<Integer>(value);
  }

  bool flag() { return (integer<std::uint8_t>() & 1) != 0; }

  /// From `least` to `most`, both among them and not more than 65535 apart.
  int integerIn(int least, int most) {
    const int count = most - least + 1;
    return least + (count > 256 ? integer<std::uint16_t>() : integer<std::uint8_t>()) % count;
  }

  template <class Item, std::size_t kCount>
  const Item& oneOf(const Item (&items)[kCount]) {
    return items[integerIn(0, static_cast<int>(kCount) - 1)];
  }

  /// Every float there is, those that are no numbers too; half of the time one that a person could
  /// have meant.
  float real() {
    using Limits = std::numeric_limits<float>;
    switch (integerIn(0, 7)) {
      case 0:
      case 1:
        return integer<std::int8_t>();
      case 2:
        return static_cast<float>(integer<std::int16_t>()) / 16.0f;
      case 3:
        return static_cast<float>(integer<std::int8_t>()) / 128.0f;
      case 4:
        return integer<std::int16_t>();
      case 5:
        return static_cast<float>(integer<std::int32_t>());
      case 6:
        return oneOf({0.0f, -0.0f, Limits::min(), Limits::denorm_min(), Limits::max(),
                      Limits::lowest(), Limits::infinity(), -Limits::infinity(),
                      Limits::quiet_NaN(), Limits::epsilon()});
      default:
        return std::bit_cast<float>(integer<std::uint32_t>());
    }
  }

 private:
  std::span<const std::uint8_t> left_;
};

}  // namespace fuzz
