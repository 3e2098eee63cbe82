#include "render/disc.h"

#include <algorithm>
#include <cmath>

namespace brisel {
namespace {

/// The integer nearest below, kept within `range`.
std::int32_t floorWithin(double value, IndexRange range) {
  const double low = range.begin;
  const double high = range.end;
  return static_cast<std::int32_t>(std::floor(std::clamp(value, low, high)));
}

}  // namespace

IndexRange Disc::rowSpan(float rowSquare, IndexRange visible, bool includeRim) const {
  const auto inside = [&](std::int32_t dx) {
    const float fx = static_cast<float>(dx) - fractionX_;
    const float d = std::sqrt(fx * fx + rowSquare);
    return includeRim ? d <= radius() : d < radius();
  };
  // A bound that no rounding of the pixels' own test reaches beyond; the test settles the ends.
  constexpr double kSlack = 1.0 + 1.0 / (1 << 20);
  const double square = static_cast<double>(radius_) * radius_ * kSlack - rowSquare;
  const double half = square > 0.0 ? std::sqrt(square) : 0.0;
  IndexRange span{floorWithin(fractionX_ - half - 1.0, visible),
                  floorWithin(fractionX_ + half + 2.0, visible)};
  while (!span.empty() && !inside(span.begin)) ++span.begin;
  while (!span.empty() && !inside(span.end - 1)) --span.end;
  return span;
}

IndexRange Disc::rowHole(float rowSquare, IndexRange span, float distance) const {
  const double square = static_cast<double>(distance) * distance - rowSquare;
  if (distance <= 0.0f || square <= 0.0) return {span.end, span.end};
  const double half = std::sqrt(square);
  const IndexRange hole{floorWithin(fractionX_ - half + 1.0, span),
                        floorWithin(fractionX_ + half, span)};
  return hole.empty() ? IndexRange{span.end, span.end} : hole;
}

}  // namespace brisel
