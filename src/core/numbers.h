// Number rules that every pixel and every star depends on.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace brisel {

/// Pi as settings and engine use it, and as sprites do.
inline constexpr float kPi = 3.14159265f;
inline constexpr float kShortPi = 3.141592f;

/// Full scale of a 16-bit channel, and how many of its levels make one of an 8-bit channel.
inline constexpr float kDeepFullScale = 32768.0f;
inline constexpr float kDeepPerByte = 32768.0f / 255.0f;

/// Truncates toward zero. A value out of range saturates, and not-a-number becomes the least
/// integer, so that a coordinate that is not a number lies off every frame.
inline std::int32_t truncToInt(float value) {
  constexpr float kLimit = 2147483648.0f;
  if (value >= kLimit) return std::numeric_limits<std::int32_t>::max();
  if (!(value >= -kLimit)) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

/// The part of `value` behind the decimal point, with the sign of `value`.
inline float fraction(float value) {
  return value - std::trunc(value);
}

}  // namespace brisel
