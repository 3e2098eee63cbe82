// The effect, one of it: renders frame after frame, keeps what one leaves to the next.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/random.h"
#include "effect/frame.h"
#include "effect/saved_state.h"
#include "effect/values.h"
#include "render/stars/compose.h"

namespace brisel {

/// Owns its stars, random generator and all other state: no instance ever meets another. One is
/// used by one thread at a time, by whichever thread; different instances by any threads at once.
/// A frame follows from the frames before it, not from its time. The same calls give the same bytes
/// on every machine. Copies go on from where the original stood, each by itself.
class Instance {
 public:
  Instance() = default;
  Instance(const Instance& other);  // throws std::bad_alloc
  Instance(Instance&& other) noexcept;
  Instance& operator=(Instance other) noexcept;
  ~Instance();

  /// Advances the stars by one step and writes the frame they make, all pixels of it. A `time`
  /// below 1 (in frames) starts afresh, with the same stars every time. `mask` is the outline of
  /// the mask that the values choose, at this time; null without one. Nothing passed is kept.
  ///
  /// Returns false, and does nothing, when a view cannot be what it says it is: no output, rows
  /// shorter than their pixels, an input of another format. Throws std::bad_alloc; the stars have
  /// then taken the step or not, and the frame is incomplete.
  bool render(const Values& values, std::int32_t time, const FrameViews& views,
              const MaskOutline* mask = nullptr);

  /// The same without writing the frame, at a fraction of the time: what is rendered next is as if
  /// it had been. The output needs no bytes, but the size and format that frames have.
  bool step(const Values& values, std::int32_t time, const FrameViews& views,
            const MaskOutline* mask = nullptr);

  std::int32_t starCount() const { return starCount_; }  // living stars

  /// All that the next frames depend on, for restore() of the same version of the effect on a
  /// machine of the same byte order. Throws std::bad_alloc.
  std::vector<std::uint8_t> save() const;

  /// Becomes the instance that was saved; the bytes of the next frames are the same as its own.
  /// Bytes are checked whole: when they are refused the instance stays as it was. Any bytes are
  /// safe.
  RestoreResult restore(std::span<const std::uint8_t> bytes);

 private:
  FrameState state();

  Particle* stars_ = nullptr;  // owned
  std::int32_t capacity_ = 0;
  std::int32_t starCount_ = 0;
  std::int32_t stepCounter_ = 0;
  float emissionAccumulator_ = 0.0f;
  RandomGenerator random_;
  SpriteState sprites_;
};

}  // namespace brisel
