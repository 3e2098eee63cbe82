// The stars of one effect at any frame, whatever order a host asks for frames in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>

#include "effect/instance.h"

namespace brisel {

/// A frame follows from the one before it. So the way to a frame leads from the stars as they
/// stand, from a state that was kept, or from frame 0, whichever is nearest. States are kept every
/// 8 frames, in at most 16 MB: when these are full, every other one goes, and half as many are kept
/// from then on.
class StarHistory {
 public:
  /// Advances an instance by a frame that nobody sees.
  using Step = std::function<void(Instance& instance, std::int32_t frame)>;

  /// The stars as they are before `frame`, which is 0 or more, after `step` for each frame on the
  /// way. Whoever renders it then says so by moveOn. Throws what `step` throws and std::bad_alloc.
  Instance& goTo(std::int32_t frame, const Step& step);

  /// The frame gone to was rendered.
  void moveOn() { ++next_; }

  /// Forgets all stars.
  void clear();

 private:
  void restoreNearest(std::int32_t frame);
  void keep();

  Instance instance_;
  std::int32_t next_ = 0;                  // the frame before which `instance_` stands
  std::map<std::int32_t, Instance> kept_;  // by the frame before which they stand
  std::size_t keptBytes_ = 0;
  std::int32_t spacing_ = 8;
};

}  // namespace brisel
