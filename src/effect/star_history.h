// The stars of one effect at any frame, whatever order a host asks for frames in.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>

#include "effect/instance.h"

namespace brisel {

/// A frame follows from the one before it. So the way to a frame leads from the stars as they
/// stand, from a state that was kept, or from where they begin, whichever is nearest. States are
/// kept every 8 frames around the frame gone to last and at wider, even distances elsewhere, in
/// so many bytes altogether. Belongs to one thread at a time.
class StarHistory {
 public:
  /// Stars begin anew after so many frames, which bounds the way to any frame.
  static constexpr std::int32_t kLongestWay = 1'000'000;

  /// The frame at which the stars of this one began.
  static constexpr std::int32_t beginOf(std::int32_t frame) { return frame - frame % kLongestWay; }

  explicit StarHistory(std::size_t mostBytes = kDefaultBytes) : mostBytes_(mostBytes) {}

  /// Advances an instance by a frame that nobody sees.
  using Step = std::function<void(Instance& instance, std::int32_t frame)>;

  /// The stars as they are before `frame`, which is 0 or more, after `step` for each frame on the
  /// way. Whoever renders it then says so by moveOn. Throws what `step` throws and std::bad_alloc.
  Instance& goTo(std::int32_t frame, const Step& step);

  /// The frame gone to was rendered.
  void moveOn() { ++next_; }

  /// Living stars as they are where the way has led last.
  std::int32_t starCount() const { return instance_.starCount(); }

  /// The stars after the step of `frame` are others than those that are known.
  void forgetAfter(std::int32_t frame);

 private:
  static constexpr std::size_t kDefaultBytes = 16 << 20;
  static constexpr std::int32_t kLeastSpacing = 8;

  void restoreNearest(std::int32_t frame);
  void keep();
  void makeRoom();
  std::int32_t distance(std::int32_t frame) const { return std::abs(frame - next_); }

  std::size_t mostBytes_;
  Instance instance_;
  std::int32_t next_ = 0;                  // the frame before which `instance_` stands
  std::map<std::int32_t, Instance> kept_;  // by the frame before which they stand
  std::int32_t spacing_ = kLeastSpacing;   // of those that are kept however far away they are
};

}  // namespace brisel
