#include "hostkit/session.h"

namespace hostkit {

using brisel::MessageAnswer;
using brisel::MessageRequest;
using brisel::ProgramMessage;

namespace {

/// Why a message was refused, as the end of a sentence.
std::string describe(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::NoInstance:
      return "it has no instance";
    case MessageAnswer::NoParameters:
      return "parameters are missing";
    case MessageAnswer::BadFrame:
      return "no frame has such a size or depth";
    case MessageAnswer::BufferTooSmall:
      return "its state needs more bytes";
    case MessageAnswer::BadThreadCount:
      return "it paints with 1 to " + std::to_string(Session::kMostThreads) + " threads";
    case MessageAnswer::UnknownInstructionSet:
      return "this processor has no such instruction set";
    case MessageAnswer::Busy:
      return "another thread renders with the state that they share";
    case MessageAnswer::OutOfMemory:
      return "there is not enough memory";
    case MessageAnswer::NoSavedState:
      return "these bytes are no saved state";
    case MessageAnswer::OtherByteOrder:
      return "the state was saved on a machine of another byte order";
    case MessageAnswer::OtherVersion:
      return "the state was saved by another version of the effect";
    case MessageAnswer::EndsEarly:
      return "the saved state ends early";
    case MessageAnswer::Damaged:
      return "the saved state is damaged";
    default:
      return "answer " + std::to_string(static_cast<int>(answer));
  }
}

/// What is asked for, as an infinitive.
std::string actionOf(MessageRequest request) {
  switch (request) {
    case MessageRequest::Advance:
      return "step without a picture";
    case MessageRequest::SaveState:
      return "save its state";
    case MessageRequest::RestoreState:
      return "restore a state";
    case MessageRequest::UsePainting:
      return "paint as asked";
    case MessageRequest::UseOwnState:
      return "keep a state of its own";
    case MessageRequest::SetBackdrop:
      return "take a backdrop";
  }
  return {};
}

ProgramMessage newMessage(MessageRequest request) {
  ProgramMessage message;
  message.request = request;
  return message;
}

}  // namespace

void Session::advance(World& input, const OutputShape& output, const RenderRequest& request) {
  prepareFrame(input, output, request);
  ProgramMessage message = newMessage(MessageRequest::Advance);
  message.u.advance = {output.width, output.height, static_cast<std::int32_t>(output.depth)};
  ask(message);
}

std::vector<std::uint8_t> Session::saveState() {
  ProgramMessage message = newMessage(MessageRequest::SaveState);
  std::vector<std::uint8_t> bytes;
  callOrThrow(PF_Cmd_COMPLETELY_GENERAL, &message);
  if (message.answer == MessageAnswer::BufferTooSmall) {
    bytes.resize(message.u.state.size);
    message.u.state.bytes = bytes.data();
    message.u.state.capacity = bytes.size();
  }
  ask(message);
  return bytes;
}

void Session::restoreState(std::span<const std::uint8_t> bytes) {
  std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
  ProgramMessage message = newMessage(MessageRequest::RestoreState);
  message.u.state = {copy.data(), copy.size(), copy.size()};
  ask(message);
}

void Session::usePainting(int threads, const std::string& instructionSet) {
  ProgramMessage message = newMessage(MessageRequest::UsePainting);
  brisel::PaintingMessage& painting = message.u.painting;
  painting.threads = threads;
  // A name that does not fit is none that the module knows, cut off or not.
  instructionSet.copy(painting.instructionSet, sizeof painting.instructionSet - 1);
  ask(message);
}

void Session::useOwnState() {
  ProgramMessage message = newMessage(MessageRequest::UseOwnState);
  ask(message);
}

void Session::setBackdrop(const World* backdrop) {
  ProgramMessage message = newMessage(MessageRequest::SetBackdrop);
  message.u.backdrop.world = backdrop != nullptr ? &backdrop->record() : nullptr;
  ask(message);
}

void Session::ask(ProgramMessage& message) {
  message.answer = MessageAnswer::None;
  callOrThrow(PF_Cmd_COMPLETELY_GENERAL, &message);
  if (message.answer == MessageAnswer::Done) return;
  const std::string asked = actionOf(message.request);
  if (message.answer == MessageAnswer::None) {
    throw Error("the effect module does not know how to " + asked + "; use one of this version");
  }
  throw Error("the effect module cannot " + asked + ": " + describe(message.answer));
}

}  // namespace hostkit
