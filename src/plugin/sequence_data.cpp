#include "plugin/sequence_data.h"

#include <memory>
#include <new>

#include "effect/frame.h"
#include "plugin/locked_handle.h"
#include "plugin/module_state.h"
#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

/// Empty when there is no memory for all of it.
PresetList presetsOf(const ModuleFolders& folders, const char* section) try {
  return readPresetList({folders.presetFilePath, folders.presetFolder}, section);
} catch (const std::bad_alloc&) {
  return {};
}

/// Null when there is no memory.
std::unique_ptr<InstanceExtras> makeExtras() {
  const ModuleFolders& folders = moduleState().folders;
  std::unique_ptr<InstanceExtras> extras(new (std::nothrow) InstanceExtras);
  if (extras == nullptr) return nullptr;
  extras->presetLists[kEmitterPresetList] = presetsOf(folders, kEmitterSection);
  extras->presetLists[kStarPresetList] = presetsOf(folders, kStarSection);
  return extras;
}

}  // namespace

PF_Err createSequence(PF_InData& in, PF_OutData& out) {
  if (!hasHandleCallbacks(in)) return kNoSequenceHandle;
  const PF_Handle handle = in.utils->host_new_handle(sizeof(SequenceState));
  if (handle == nullptr) return kNoSequenceHandle;
  bool created = false;
  {
    const LockedHandle locked(in, handle);
    if (locked.get() != nullptr) {
      auto* state = new (locked.get()) SequenceState;
      state->extras = makeExtras().release();
      state->presetListCount = state->extras != nullptr ? kPresetListCount : 0;
      created = true;
    }
  }
  if (!created) {
    in.utils->host_dispose_handle(handle);
    return kNoSequenceHandle;
  }
  out.sequence_data = handle;
  out.flat_sdata_size = sizeof(SequenceState);
  return PF_Err_NONE;
}

PF_Err releaseSequence(PF_InData& in, PF_OutData& out) {
  if (in.sequence_data == nullptr || !hasHandleCallbacks(in)) return PF_Err_NONE;
  {
    const LockedHandle locked(in, out.sequence_data);
    if (auto* state = static_cast<SequenceState*>(locked.get())) {
      releaseStars(state->stars, state->capacity);
      delete state->extras;
      *state = SequenceState{};
    }
  }
  in.utils->host_dispose_handle(in.sequence_data);
  out.sequence_data = nullptr;
  return PF_Err_NONE;
}

}  // namespace brisel
