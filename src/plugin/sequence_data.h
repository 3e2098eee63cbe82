// The state of one effect instance, which the host keeps in its sequence-data handle.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "engine/particle.h"
#include "plugin/controls/preset_list.h"
#include "plugin/drawing_state.h"
#include "plugin/locked_handle.h"
#include "plugin/sdk/in_out_data.h"
#include "render/painter.h"

namespace brisel {

/// The lists of an instance.
enum PresetListIndex : std::int32_t { kEmitterPresetList, kStarPresetList, kPresetListCount };

/// What an instance has outside of the handle. The handle's last field leads to the lists, which
/// are therefore the first.
struct InstanceExtras {
  PresetList presetLists[kPresetListCount];

  // What messages from programs ask for
  std::unique_ptr<OwnDrawing> own;         // null: the module's
  std::unique_ptr<Painter> painter;        // null: that of the drawing state
  std::optional<PF_EffectWorld> backdrop;  // of the next frame; its pixels are a program's
};
static_assert(offsetof(InstanceExtras, presetLists) == 0);

/// The handle's contents. Nothing of it survives flattening.
struct SequenceState {
  Particle* stars = nullptr;  // `capacity` records of resizeStars; owned
  std::int32_t capacity = 0;
  std::int32_t starCount = 0;    // living stars, at most capacity
  std::int32_t stepCounter = 0;  // steps since the last reset
  std::uint32_t seal = 0;        // LockedSequence's
  float emissionAccumulator = 0.0f;
  std::int32_t presetListCount = 0;  // 2 while the lists exist
  InstanceExtras* extras = nullptr;  // owned; null after release, or without memory for it
};
static_assert(sizeof(SequenceState) == 40);

/// The state in a handle that stays locked for a scope.
///
/// The state leads to memory of this process, and projects, hosts that copy what they should
/// flatten, and other versions may put anything into a handle. So each scope that changes the state
/// leaves a seal in it, which the next one finds in the same handle only if no byte changed in
/// between.
class LockedSequence {
 public:
  LockedSequence(const PF_InData& in, PF_Handle handle);
  ~LockedSequence();
  LockedSequence(const LockedSequence&) = delete;
  LockedSequence& operator=(const LockedSequence&) = delete;

  /// Null where LockedHandle's is, and for what this module did not leave there.
  const SequenceState* get() const { return state_; }

  /// The same, to be sealed anew when the scope ends. Whoever only reads leaves the seal alone: on
  /// another thread, a render may be about to leave its own.
  SequenceState* change();

  /// Begins a new state in a handle of at least its size. Null as LockedHandle's block.
  SequenceState* create();

 private:
  PF_Handle handle_;
  LockedHandle locked_;
  SequenceState* state_ = nullptr;
  bool changes_ = false;
};

/// What the host is told when it has no handle to give.
inline constexpr PF_Err kNoSequenceHandle = -108;

/// Creates the instance's state in a new handle, with the presets in the module's folder.
/// Returns kNoSequenceHandle, and creates nothing, when the host gives no handle or refuses to lock
/// it. Presets for which there is no memory are left out in silence.
PF_Err createSequence(PF_InData& in, PF_OutData& out);

/// Releases the instance's state and its handle; without one, does nothing.
PF_Err releaseSequence(PF_InData& in, PF_OutData& out);

}  // namespace brisel
