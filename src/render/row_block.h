// What a sprite covers of as many rows as there are lanes, found for all of them at once: the loop
// over the rows then only reads, and need not wait for square roots to know how far a row goes.
#pragma once

#include <cstdint>

#include "render/simd.h"

namespace brisel {

/// Steps of rows: begin, begin + 1 ... end - 1; none where begin >= end.
template <class Isa>
struct StepLanes {
  typename Lanes<Isa>::Int begin, end;
};

template <class Isa>
struct RowBlock {
  using L = Lanes<Isa>;
  static constexpr int kRows = L::kCount;

  static constexpr int kMostStretches = 5;
  alignas(64) float row[kRows];  // what the sprite's shader needs to know of it
  alignas(64) std::int32_t begin[kMostStretches][kRows];
  alignas(64) std::int32_t end[kMostStretches][kRows];

  /// Stretches lie in order and apart from each other.
  void setStretch(int stretch, const StepLanes<Isa>& steps) {
    L::store(begin[stretch], steps.begin);
    L::store(end[stretch], steps.end);
  }
};

}  // namespace brisel
