#include "plugin/messages.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "effect/frame.h"
#include "effect/instance.h"
#include "effect/saved_state.h"
#include "plugin/drawing_state.h"
#include "plugin/host_parameters.h"
#include "plugin/message/program_message.h"
#include "plugin/render_driver.h"
#include "plugin/sequence_data.h"
#include "render/kernels.h"
#include "render/painter.h"

namespace brisel {
namespace {

/// The record, when it is one of ours; each field is read only if those before it agree.
ProgramMessage* knownMessage(void* extra) {
  if (extra == nullptr || reinterpret_cast<std::uintptr_t>(extra) % alignof(ProgramMessage) != 0) {
    return nullptr;
  }
  auto* message = static_cast<ProgramMessage*>(extra);
  const bool isKnown = message->size == sizeof *message && message->magic == kMessageMagic &&
                       message->version == kMessageVersion &&
                       message->request >= MessageRequest::Advance &&
                       message->request <= MessageRequest::SetBackdrop;
  return isKnown ? message : nullptr;
}

MessageAnswer toAnswer(RestoreResult result) {
  switch (result) {
    case RestoreResult::Restored:
      return MessageAnswer::Done;
    case RestoreResult::NoSavedInstance:
      return MessageAnswer::NoSavedState;
    case RestoreResult::OtherByteOrder:
      return MessageAnswer::OtherByteOrder;
    case RestoreResult::OtherVersion:
      return MessageAnswer::OtherVersion;
    case RestoreResult::EndsEarly:
      return MessageAnswer::EndsEarly;
    case RestoreResult::Damaged:
      return MessageAnswer::Damaged;
    case RestoreResult::OutOfMemory:
      break;
  }
  return MessageAnswer::OutOfMemory;
}

MessageAnswer advance(const PF_InData& in, PF_ParamDef* const* params, const AdvanceMessage& frame,
                      SequenceState& sequence) {
  if (!hasAllParameters(in, params)) return MessageAnswer::NoParameters;
  const bool isFrame =
      frame.width > 0 && frame.height > 0 && (frame.channelBits == 8 || frame.channelBits == 16);
  if (!isFrame) return MessageAnswer::BadFrame;
  const PixelFormat format = frame.channelBits == 16 ? PixelFormat::Argb16 : PixelFormat::Argb8;
  const bool isComplete = advanceFrame(in, params, {frame.width, frame.height}, format, sequence);
  return isComplete ? MessageAnswer::Done : MessageAnswer::OutOfMemory;
}

MessageAnswer save(StateMessage& to, SequenceState& sequence) {
  const DrawingLease drawing(sequence.extras->own.get());
  if (drawing.isPassing()) return MessageAnswer::Busy;
  const std::vector<std::uint8_t> bytes = saveState(frameStateOf(sequence, drawing));
  to.size = bytes.size();
  if (to.bytes == nullptr || to.capacity < bytes.size()) return MessageAnswer::BufferTooSmall;
  std::ranges::copy(bytes, to.bytes);
  return MessageAnswer::Done;
}

MessageAnswer restore(const StateMessage& from, SequenceState& sequence) {
  const DrawingLease drawing(sequence.extras->own.get());
  if (drawing.isPassing()) return MessageAnswer::Busy;
  const std::size_t size = from.bytes != nullptr ? static_cast<std::size_t>(from.size) : 0;
  return toAnswer(restoreState({from.bytes, size}, frameStateOf(sequence, drawing)));
}

MessageAnswer usePainting(const PaintingMessage& painting, InstanceExtras& extras) {
  if (painting.threads < 1 || painting.threads > kMostMessageThreads) {
    return MessageAnswer::BadThreadCount;
  }
  const auto& text = painting.instructionSet;
  const std::string_view name(text, std::find(std::begin(text), std::end(text), '\0'));
  const auto available = availableKernels();
  const auto chosen = std::ranges::find_if(
      available, [&](const Kernels* kernels) { return name == kernels->name; });
  if (!name.empty() && chosen == available.end()) return MessageAnswer::UnknownInstructionSet;
  PaintOptions options{.threads = painting.threads};
  if (!name.empty()) options.kernels = *chosen;
  extras.painter = std::make_unique<Painter>(options);
  return MessageAnswer::Done;
}

MessageAnswer useOwnState(SequenceState& sequence) {
  sequence.extras->own = std::make_unique<OwnDrawing>();
  resetState(frameStateOf(sequence, DrawingLease(sequence.extras->own.get())));
  return MessageAnswer::Done;
}

MessageAnswer setBackdrop(const PF_EffectWorld* world, InstanceExtras& extras) {
  if (world != nullptr && !isSound(*world)) return MessageAnswer::BadFrame;
  extras.backdrop.reset();
  if (world != nullptr) extras.backdrop = *world;
  return MessageAnswer::Done;
}

MessageAnswer fulfil(const PF_InData& in, PF_ParamDef* const* params, ProgramMessage& message,
                     SequenceState& sequence) {
  switch (message.request) {
    case MessageRequest::Advance:
      return advance(in, params, message.u.advance, sequence);
    case MessageRequest::SaveState:
      return save(message.u.state, sequence);
    case MessageRequest::RestoreState:
      return restore(message.u.state, sequence);
    case MessageRequest::UsePainting:
      return usePainting(message.u.painting, *sequence.extras);
    case MessageRequest::UseOwnState:
      return useOwnState(sequence);
    case MessageRequest::SetBackdrop:
      return setBackdrop(message.u.backdrop.world, *sequence.extras);
  }
  return MessageAnswer::None;
}

}  // namespace

void answerMessage(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params, void* extra) {
  ProgramMessage* message = knownMessage(extra);
  if (message == nullptr) return;
  message->answer = MessageAnswer::NoInstance;
  LockedSequence locked(in, out.sequence_data);
  SequenceState* sequence = locked.change();
  if (sequence == nullptr || sequence->extras == nullptr) return;
  try {
    message->answer = fulfil(in, params, *message, *sequence);
  } catch (...) {  // the only failure here is lack of memory
    message->answer = MessageAnswer::OutOfMemory;
  }
}

}  // namespace brisel
