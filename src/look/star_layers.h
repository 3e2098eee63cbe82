// The stars of a look's layers, at whatever frame a host asks for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "effect/star_history.h"
#include "look/look.h"

namespace brisel {

/// Belongs to one thread at a time, and to one look until it is told to forget.
class StarLayers {
 public:
  /// What a layer's parameters are at a frame from 0 on.
  using ValuesAt = std::function<Values(std::size_t layer, std::int32_t frame)>;

  /// The stars are others from the first frame on.
  void forget() { histories_.clear(); }

  /// Draws a layer as it is at `frame` with `values`, after steps with those of `valuesAt`. Steps
  /// before frame 0, which the look asks for, have the values of frame 0. Throws what `valuesAt`
  /// throws and std::bad_alloc; what was stepped before stays good.
  void draw(const Look& look, std::size_t layer, std::int32_t frame, const Values& values,
            const FrameViews& views, const ValuesAt& valuesAt);

 private:
  std::vector<StarHistory> histories_;
};

}  // namespace brisel
