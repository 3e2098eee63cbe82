// A program's message to an instance of the effect. The program fills the record and has the host
// pass it as `extra` of PF_Cmd_COMPLETELY_GENERAL; the module writes its answer into the record.
// The command itself never reports an error: a record whose answer is still None met a module that
// does not know it. Layout and numbers stay as they are within a version.
#pragma once

#include <cstddef>
#include <cstdint>

#include "plugin/sdk/pixel.h"

namespace brisel {

inline constexpr std::uint32_t kMessageMagic = 0x4252534D;  // "BRSM" as a number
inline constexpr std::uint32_t kMessageVersion = 1;
inline constexpr std::int32_t kMostMessageThreads = 256;

/// What is asked for, and the member of ProgramMessage::u that goes with it.
enum class MessageRequest : std::int32_t {
  /// u.advance: the step that a render of this frame would take, without its pixels. Time, layer
  /// width and quality are the command's, in PF_InData; so are parameters and input, in `params`.
  Advance = 1,
  /// u.state: writes all that the instance's next frames depend on. That takes in the random
  /// generator and drawing state that the instance uses, which are shared with others unless they
  /// are its own.
  SaveState = 2,
  /// u.state: reads them again; `size` is the number of bytes. Nothing changes when it is refused.
  RestoreState = 3,
  /// u.painting: the threads and the instruction set that the instance paints with. Pixels do not
  /// depend on them.
  UsePainting = 4,
  /// Gives the instance a random generator and a drawing state of its own, and starts it afresh.
  /// Such instances may render at once on several threads, each on one at a time. A render without
  /// the memory for it then answers PF_Err_OUT_OF_MEMORY, where hosts get an empty frame.
  UseOwnState = 5,
  /// u.backdrop: the image that stars are mixed with in place of the input in the next frame that
  /// is rendered, and only there. Emitters and colors still read the input.
  SetBackdrop = 6
};

enum class MessageAnswer : std::int32_t {
  None = 0,  // as the program leaves it
  Done = 1,
  // Refused, and nothing is changed:
  NoInstance = 2,    // there is no sequence data, or the host refuses to lock it
  NoParameters = 3,  // the host passed none, or not all
  BadFrame = 4,      // a size or a depth that no frame has, or a world without its pixels
  BufferTooSmall = 5,
  BadThreadCount = 6,
  UnknownInstructionSet = 7,  // or one that this processor lacks
  Busy = 8,                   // another thread renders with the shared state
  OutOfMemory = 9,            // an Advance may have taken its step, with fewer stars
  // Refused bytes of a saved state:
  NoSavedState = 10,  // they are something else
  OtherByteOrder = 11,
  OtherVersion = 12,
  EndsEarly = 13,
  Damaged = 14
};

/// The output that the frame would be rendered into.
struct AdvanceMessage {
  std::int32_t width;        // pixels
  std::int32_t height;       // pixels
  std::int32_t channelBits;  // 8 or 16
};

/// The program's own buffer, borrowed for the command.
struct StateMessage {
  std::uint8_t* bytes;     // null: only the size is asked for, and BufferTooSmall answered
  std::uint64_t capacity;  // of a buffer to write; unused when it is read
  std::uint64_t size;      // of the state, bytes; written by SaveState, also when refused
};

struct PaintingMessage {
  std::int32_t threads;     // the host's among them, 1 to kMostMessageThreads
  char instructionSet[12];  // zero-terminated: "plain", "sse2", "avx2", "avx512", "neon"; or ""
};

struct BackdropMessage {
  /// Copied; its pixels are borrowed until that frame is rendered. Of the output's depth and of any
  /// size; shares no byte with the output. Null: the input again.
  const PF_EffectWorld* world;
};

struct ProgramMessage {
  std::uint32_t size = sizeof(ProgramMessage);
  std::uint32_t magic = kMessageMagic;
  std::uint32_t version = kMessageVersion;
  MessageRequest request{};
  MessageAnswer answer = MessageAnswer::None;
  std::int32_t reserved = 0;
  union {
    AdvanceMessage advance;
    StateMessage state;
    PaintingMessage painting;
    BackdropMessage backdrop;
  } u{};
};
static_assert(sizeof(ProgramMessage) == 48 && offsetof(ProgramMessage, size) == 0);
static_assert(offsetof(ProgramMessage, magic) == 4 && offsetof(ProgramMessage, version) == 8);
static_assert(offsetof(ProgramMessage, request) == 12 && offsetof(ProgramMessage, answer) == 16);
static_assert(offsetof(ProgramMessage, u) == 24);
static_assert(sizeof(AdvanceMessage) == 12 && offsetof(AdvanceMessage, height) == 4);
static_assert(offsetof(AdvanceMessage, channelBits) == 8);
static_assert(sizeof(StateMessage) == 24 && offsetof(StateMessage, capacity) == 8);
static_assert(offsetof(StateMessage, size) == 16);
static_assert(sizeof(PaintingMessage) == 16 && offsetof(PaintingMessage, instructionSet) == 4);
static_assert(sizeof(BackdropMessage) == 8);

}  // namespace brisel
