// The reference: the effect's arithmetic written down once more, as plainly as it can be said, with
// no thought of speed. The tests hold the module against it to the byte. It shares the module's
// records and nothing of its code.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace reference {

inline const float kPi = 3.14159265f;
inline const float kShortPi = 3.141592f;  // in the drawing's formulas
inline const float kLevelsPerByte = std::bit_cast<float>(0x43008081u);

inline std::int32_t toInt(float v) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (std::isnan(v) || v < -2147483648.0f) return Limits::min();
  if (v >= 2147483648.0f) return Limits::max();
  return static_cast<std::int32_t>(v);
}
inline float real(std::int32_t v) {
  return static_cast<float>(v);
}
inline float frac(float v) {
  return v - std::trunc(v);
}
inline float square(float v) {
  return v * v;
}
inline float clamp01(float v) {
  return std::min(1.0f, std::max(0.0f, v));
}

inline float sine(float v) {
  return static_cast<float>(std::sin(static_cast<double>(v)));
}
inline float cosine(float v) {
  return static_cast<float>(std::cos(static_cast<double>(v)));
}
inline float atan(float v) {
  return static_cast<float>(std::atan(static_cast<double>(v)));
}
inline float atan2(float y, float x) {
  return static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x)));
}

}  // namespace reference
