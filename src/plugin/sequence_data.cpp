#include "plugin/sequence_data.h"

#include <array>
#include <bit>
#include <chrono>
#include <memory>
#include <new>

#include "effect/frame.h"
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

/// Another number each time that the module is loaded: by the time, and where the system put it.
std::uint64_t numberOfThisLoading() {
  static const auto time = std::chrono::steady_clock::now().time_since_epoch().count();
  return static_cast<std::uint64_t>(time) ^ reinterpret_cast<std::uintptr_t>(&time);
}

/// Of all that the state says, in this handle, under this loading of the module.
std::uint32_t sealOf(SequenceState state, PF_Handle handle) {
  state.seal = 0;
  std::uint64_t sum = numberOfThisLoading() ^ reinterpret_cast<std::uintptr_t>(handle);
  for (const std::uint64_t word : std::bit_cast<std::array<std::uint64_t, 5>>(state)) {
    sum = (sum ^ word) * 0x9E3779B97F4A7C15u;
    sum ^= sum >> 32;
  }
  return static_cast<std::uint32_t>(sum);
}

bool mayHoldSequence(const PF_InData& in, PF_Handle handle) {
  if (handle == nullptr || in.utils == nullptr || in.utils->host_get_handle_size == nullptr) {
    return true;
  }
  const A_u_longlong size = in.utils->host_get_handle_size(handle);
  return size == 0 || size >= sizeof(SequenceState);  // 0 of a host that does not know
}

}  // namespace

LockedSequence::LockedSequence(const PF_InData& in, PF_Handle handle)
    : handle_(handle), locked_(in, mayHoldSequence(in, handle) ? handle : nullptr) {
  auto* state = static_cast<SequenceState*>(locked_.get());
  if (state != nullptr && state->seal == sealOf(*state, handle_)) state_ = state;
}

LockedSequence::~LockedSequence() {
  if (state_ != nullptr && changes_) state_->seal = sealOf(*state_, handle_);
}

SequenceState* LockedSequence::change() {
  changes_ = true;
  return state_;
}

SequenceState* LockedSequence::create() {
  if (locked_.get() != nullptr) state_ = new (locked_.get()) SequenceState;
  return change();
}

PF_Err createSequence(PF_InData& in, PF_OutData& out) {
  if (!hasHandleCallbacks(in)) return kNoSequenceHandle;
  const PF_Handle handle = in.utils->host_new_handle(sizeof(SequenceState));
  if (handle == nullptr) return kNoSequenceHandle;
  bool created = false;
  {
    LockedSequence locked(in, handle);
    if (SequenceState* state = locked.create()) {
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
    LockedSequence locked(in, out.sequence_data);
    if (SequenceState* state = locked.change()) {
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
