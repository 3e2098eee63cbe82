#include "tests/support/dice.h"

#include <algorithm>
#include <cmath>

namespace tests {

// The standard distributions differ between libraries; these do not.
std::int32_t Dice::integer(std::int32_t least, std::int32_t most) {
  const auto choices = static_cast<std::uint32_t>(most - least) + 1;
  return least + static_cast<std::int32_t>(engine_() % choices);
}

float Dice::real(float least, float most) {
  return least + (most - least) * static_cast<float>(engine_() >> 8) / 16777216.0f;
}

float Dice::logarithmic(float least, float most) {
  std::int32_t doublings = 0;
  for (float v = least; 2.0f * v <= most; v *= 2.0f) ++doublings;
  const std::int32_t doubled = integer(0, doublings);
  return std::min(most, std::ldexp(least * real(1.0f, 2.0f), doubled));
}

brisel::Rgb Dice::color() {
  const auto channel = [&] { return integer(0, 3) == 0 ? oneOf({0, 255}) : integer(0, 255); };
  return {channel(), channel(), channel()};
}

float Dice::value() {
  if (integer(0, 3) > 0) return real(0.0f, 1.5f);
  return oneOf({0.0f, -0.5f, 1.0f, 1e-6f, 0.004f, 50.0f, std::nanf(""), HUGE_VALF});
}

float Dice::position(std::int32_t extent) {
  const float far = static_cast<float>(2 * extent);
  if (coin()) return real(-far, static_cast<float>(extent) + far);
  const float edge = static_cast<float>(oneOf({-1, 0, 1, extent / 2, extent - 1, extent}));
  const float side = oneOf({-1.0f, 1.0f});
  return edge + side * oneOf({0.0f, 1e-7f, 0.001f, 0.25f, 0.5f, 0.75f, 0.9999999f});
}

}  // namespace tests
