// The state of one effect instance, which the host keeps in its sequence-data handle.
#pragma once

#include <cstdint>

#include "engine/particle.h"
#include "plugin/controls/preset_list.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

/// The lists of an instance.
enum PresetListIndex : std::int32_t { kEmitterPresetList, kStarPresetList, kPresetListCount };

/// The handle's contents. Nothing of it survives flattening.
struct SequenceState {
  Particle* stars = nullptr;  // `capacity` records of resizeStars; owned
  std::int32_t capacity = 0;
  std::int32_t starCount = 0;    // living stars, at most capacity
  std::int32_t stepCounter = 0;  // steps since the last reset
  std::int32_t reserved = 0;
  float emissionAccumulator = 0.0f;
  std::int32_t presetListCount = 0;   // 2 while the lists exist
  PresetList* presetLists = nullptr;  // kPresetListCount of them; owned
};
static_assert(sizeof(SequenceState) == 40);

/// What the host is told when it has no handle to give.
inline constexpr PF_Err kNoSequenceHandle = -108;

/// Creates the instance's state in a new handle, with the presets in the module's folder.
/// Returns kNoSequenceHandle, and creates nothing, when the host gives no handle or refuses to lock
/// it.
PF_Err createSequence(PF_InData& in, PF_OutData& out);

/// Releases the instance's state and its handle; without one, does nothing.
PF_Err releaseSequence(PF_InData& in, PF_OutData& out);

}  // namespace brisel
