// An instance of the effect: renders frame after frame and keeps what one leaves to the next.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "effect/frame_views.h"
#include "effect/values.h"

namespace brisel {

struct MaskOutline;  // engine/mask_outline.h makes one

/// The result of restoring bytes.
enum class RestoreResult : std::uint8_t {
  Restored,
  NoSavedInstance,  // they are something else
  OtherByteOrder,   // saved on a machine that keeps numbers the other way round
  OtherVersion,     // saved by a version of the effect that knows its stars differently
  EndsEarly,
  Damaged,
  OutOfMemory
};

/// In words, as the end of a sentence: "ends early".
std::string_view describe(RestoreResult result);

/// Owns its stars, random generator and all other state: no instance ever meets another. One is
/// used by one thread at a time, by whichever thread; different instances by any threads at once.
/// A frame follows from the frames before it, not from its time. The same calls give the same bytes
/// on every machine. Copies go on from where the original stood, each by itself.
class Instance {
 public:
  Instance();  // throws std::bad_alloc, as copying does
  Instance(const Instance& other);
  Instance(Instance&& other) noexcept;  // leaves one that can only be assigned to or destroyed
  Instance& operator=(Instance other) noexcept;
  ~Instance();

  /// Advances the stars by one step and writes the frame they make, all pixels of it. A `time`
  /// below 1 (in frames) starts afresh, with the same stars every time. `mask` is the outline of
  /// the mask that the values choose, at this time; null without one. Nothing passed is kept.
  ///
  /// Returns false, and does nothing, when a view cannot be what it says it is: no output, rows
  /// shorter than their pixels, an input or backdrop of another format. Throws std::bad_alloc; the
  /// stars have then taken the step or not, and the frame is incomplete.
  bool render(const Values& values, std::int32_t time, const FrameViews& views,
              const MaskOutline* mask = nullptr);

  /// The same without writing the frame, at a fraction of the time: the next frame is the same
  /// as after render(). The output needs no bytes, but the size and format that frames have.
  bool step(const Values& values, std::int32_t time, const FrameViews& views,
            const MaskOutline* mask = nullptr);

  std::int32_t starCount() const;  // living stars

  /// All that the next frames depend on, for restore() of the same version of the effect on a
  /// machine of the same byte order. Throws std::bad_alloc.
  std::vector<std::uint8_t> save() const;

  /// Becomes the instance that was saved; the bytes of the next frames are the same as its own.
  /// Bytes are checked whole: when they are refused the instance stays as it was. Any bytes are
  /// safe.
  RestoreResult restore(std::span<const std::uint8_t> bytes);

 private:
  struct State;

  std::unique_ptr<State> state_;
};

}  // namespace brisel
