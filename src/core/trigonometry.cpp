#include "core/trigonometry.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace brisel {
namespace {

/// A number as the sum of two: a rounded one, and what rounding lost.
struct Pair {
  double high;
  double low;
};

constexpr Pair kHalfPi{1.5707963267948966, 6.123233995736766e-17};
constexpr Pair kPiPair{3.141592653589793, 1.2246467991473532e-16};

/// An angle as a number of quarter turns and what is left, within an eighth of a turn.
struct Reduced {
  unsigned quarters;  // modulo 4
  Pair rest;
};

/// The binary digits of 2 / pi, behind a word of zeros.
constexpr std::uint64_t kTwoOverPi[] = {0, 0xa2f9836e4e441529, 0xfc2757d1f534ddc0,
                                        0xdb6295993c439041, 0xfe5163abdebbc561};

// Marked as extensions, so that builds that warn of these do not.
__extension__ using Int128 = __int128;
__extension__ using Uint128 = unsigned __int128;

/// The 128 digits from digit `first` on.
Uint128 twoOverPiDigits(int first) {
  const std::uint64_t* word = kTwoOverPi + first / 64;
  const int shift = first % 64;
  const auto digits = [&](int i) {
    const Uint128 both = static_cast<Uint128>(word[i]) << 64 | word[i + 1];
    return static_cast<std::uint64_t>(both >> (64 - shift));
  };
  return static_cast<Uint128>(digits(0)) << 64 | digits(1);
}

/// For any finite angle above pi / 4. The angle is an integer of 24 bits times a power of two, so
/// that its product with 2 / pi, less all whole turns, is one multiplication of integers.
Reduced reduceHuge(float radians) {
  const auto bits = std::bit_cast<std::uint32_t>(radians);
  const std::uint32_t mantissa = (bits & 0x7fffff) | 0x800000;
  const int exponent = static_cast<int>(bits >> 23) - 150;
  // Digits of a greater weight than the first of these are whole turns.
  const Uint128 turn = twoOverPiDigits(exponent + 62) * mantissa;
  const Uint128 half = 1;
  const auto quarters = static_cast<unsigned>((turn + (half << 125)) >> 126);
  const auto rest = static_cast<Int128>(turn << 2) >> 1;  // 2^127 is a quarter turn

  // In units of 2^-63 quarter turns: 24 bits of it, whose product with the 29 bits of pi / 2 is
  // exact, and the others.
  constexpr double kUnit = 0x1p-63;
  constexpr double kHalfPiStart = 1.570796325802803, kHalfPiEnd = 9.920935796805404e-10;
  const auto whole = static_cast<std::int64_t>(rest >> 64);
  const auto start = static_cast<double>(static_cast<float>(whole));
  const double end = static_cast<double>(whole - static_cast<std::int64_t>(start)) +
                     static_cast<double>(static_cast<std::uint64_t>(rest)) * 0x1p-64;
  const double product = start * kUnit * kHalfPiStart;
  const double others = start * kUnit * kHalfPiEnd + end * kUnit * kHalfPi.high;
  const double high = product + others;
  return {quarters & 3, {high, others - (high - product)}};
}

Reduced reduce(float magnitude) {
  constexpr float kEighthTurn = 0.7853981f, kHuge = 1048576.0f;
  if (magnitude <= kEighthTurn) return {0, {static_cast<double>(magnitude), 0.0}};
  if (magnitude >= kHuge) return reduceHuge(magnitude);
  // The first 33 bits of pi / 2, whose products with so few quarters are exact, and the others.
  constexpr double kHalfPiStart = 1.5707963267341256, kHalfPiEnd = 6.077100506506192e-11;
  const auto angle = static_cast<double>(magnitude);
  const auto quarters = static_cast<int>(angle * (1.0 / kHalfPi.high) + 0.5);
  const double start = angle - quarters * kHalfPiStart;
  const double others = quarters * kHalfPiEnd;
  const double high = start - others;
  return {static_cast<unsigned>(quarters) & 3, {high, (start - high) - others}};
}

/// The sine of an angle within an eighth of a turn, or its cosine. Which of the two differs from
/// angle to angle beyond prediction, so both take the same way without a branch.
double sineOrCosineOf(Pair angle, bool isCosine) {
  static constexpr double kSeries[2][8] = {
      {-1.0 / 6, 1.0 / 120, -1.0 / 5040, 1.0 / 362880, -1.0 / 39916800, 1.0 / 6227020800.0,
       -1.0 / 1307674368000.0, 1.0 / 355687428096000.0},
      {1.0 / 24, -1.0 / 720, 1.0 / 40320, -1.0 / 3628800, 1.0 / 479001600.0, -1.0 / 87178291200.0,
       1.0 / 20922789888000.0, -1.0 / 6402373705728000.0}};
  const double* k = kSeries[isCosine];
  const double x = angle.high, z = x * x;
  const double z2 = z * z, z4 = z2 * z2;
  const double series =
      (k[0] + z * k[1] + z2 * (k[2] + z * k[3])) + z4 * (k[4] + z * k[5] + z2 * (k[6] + z * k[7]));
  const double start = 1.0 - 0.5 * z;
  const double values[] = {x + (angle.low * start + x * z * series),
                           start + ((1.0 - start - 0.5 * z) + (z2 * series - x * angle.low))};
  return values[isCosine];
}

float rounded(double magnitude, bool isNegative) {
  static constexpr double kSigns[] = {1.0, -1.0};
  return static_cast<float>(magnitude * kSigns[isNegative]);
}

/// Arc tangents of the eighths from 0 to 1.
constexpr Pair kArcTangents[] = {
    {0.0, 0.0},
    {0.12435499454676144, -3.1253241424539383e-18},
    {0.24497866312686414, 1.0698755618734451e-17},
    {0.35877067027057225, -2.4623815582638635e-17},
    {0.4636476090008061, 2.2698777452961687e-17},
    {0.5585993153435624, -5.4556305485916264e-18},
    {0.6435011087932844, 1.5834785051444286e-17},
    {0.7188299996216245, -2.1478388444456983e-17},
    {0.7853981633974483, 3.061616997868383e-17},
};

/// The quotient, its first 21 bits kept apart: their product with a denominator is exact.
Pair divide(double numerator, double denominator) {
  const double quotient = numerator / denominator;
  const double high =
      std::bit_cast<double>(std::bit_cast<std::uint64_t>(quotient) & 0xffffffff00000000);
  return {high, (numerator - high * denominator) / denominator};
}

/// base + sign * the arc tangent of the ratio of two sides, the lesser one first.
double addArcTangent(Pair base, double sign, double lesser, double greater) {
  // The angle to the nearest of the known ones. Both sides of this ratio are exact: they come from
  // 24 bits each.
  const int eighth = (static_cast<int>(lesser / greater * 16.0) + 1) / 2;
  const double slope = eighth / 8.0;
  const Pair t = divide(lesser - slope * greater, greater + slope * lesser);
  const double x = t.high + t.low, z = x * x;
  const double series =
      x * z *
      (-1.0 / 3 +
       z * (1.0 / 5 + z * (-1.0 / 7 + z * (1.0 / 9 + z * (-1.0 / 11 + z * (1.0 / 13 - z / 15))))));

  // The terms grow smaller; what each sum loses is added to the last.
  const Pair known = kArcTangents[eighth];
  const double sum1 = base.high + sign * known.high;
  const double lost1 = sign * known.high - (sum1 - base.high);
  const double sum2 = sum1 + sign * t.high;
  const double lost2 = sign * t.high - (sum2 - sum1);
  return sum2 + (lost1 + lost2 + (base.low + sign * (known.low + (t.low + series))));
}

}  // namespace

float sine(float radians) {
  if (!std::isfinite(radians)) return std::numeric_limits<float>::quiet_NaN();
  const auto [quarters, rest] = reduce(std::abs(radians));
  return rounded(sineOrCosineOf(rest, quarters % 2 == 1), std::signbit(radians) != (quarters >= 2));
}

float cosine(float radians) {
  if (!std::isfinite(radians)) return std::numeric_limits<float>::quiet_NaN();
  const auto [quarters, rest] = reduce(std::abs(radians));
  return rounded(sineOrCosineOf(rest, quarters % 2 == 0), quarters == 1 || quarters == 2);
}

float arcTangent(float slope) {
  return arcTangent2(slope, 1.0f);
}

float arcTangent2(float y, float x) {
  if (std::isnan(y) || std::isnan(x)) return std::numeric_limits<float>::quiet_NaN();
  const bool steep = std::abs(y) > std::abs(x);
  auto lesser = static_cast<double>(std::abs(steep ? x : y));
  auto greater = static_cast<double>(std::abs(steep ? y : x));
  if (std::isinf(greater)) {
    lesser = std::isinf(lesser) ? 1.0 : 0.0;
    greater = 1.0;
  }
  if (greater == 0.0) greater = 1.0;
  const bool behind = std::signbit(x);
  const Pair base = steep ? kHalfPi : behind ? kPiPair : Pair{0.0, 0.0};
  const double angle = addArcTangent(base, steep == behind ? 1.0 : -1.0, lesser, greater);
  return std::copysign(static_cast<float>(angle), y);
}

}  // namespace brisel
