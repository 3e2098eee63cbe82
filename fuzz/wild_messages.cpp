// What a wild host sends beside commands: events, a program's messages, data that is not the
// module's own.
#include <algorithm>
#include <climits>
#include <cstring>

#include "effect/parameters.h"
#include "plugin/message/program_message.h"
#include "target.h"
#include "wild_layer.h"

namespace fuzz {
namespace {

using brisel::MessageAnswer;
using brisel::MessageRequest;
using brisel::ProgramMessage;
using hostkit::World;

/// Looks at nothing: the pane itself checks what is handed to it.
class NoPainter : public hostkit::Painter {
 public:
  void fillRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&) override {}
  void strokeRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&, float) override {}
  void drawImage(const hostkit::PaintedImage&, const DRAWBOT_PointF32&, float) override {}
};

}  // namespace

A_long WildLayer::coordinate() {
  return bytes_.flag() ? bytes_.integerIn(-50, 500) : bytes_.integer<A_long>();
}

/// No wider than a screen, since the module draws as wide as it is told.
PF_Rect WildLayer::rectangle() {
  constexpr std::int64_t kWidest = 400;
  PF_Rect rect{coordinate(), coordinate(), coordinate(), coordinate()};
  rect.right = static_cast<A_long>(std::min<std::int64_t>(rect.right, rect.left + kWidest));
  return rect;
}

void WildLayer::sendEvent() {
  constexpr PF_ParamIndex kControls[] = {brisel::kInformation, brisel::kEmitterPresets,
                                         brisel::kEmitterPresets, brisel::kStarPresets};
  constexpr PF_EventType kTypes[] = {PF_Event_DRAW, PF_Event_DO_CLICK, PF_Event_ADJUST_CURSOR};
  const int oddities = bytes_.integer<std::uint8_t>();
  const PF_EventType type = (oddities & 1) != 0 ? bytes_.integer<A_long>() : bytes_.oneOf(kTypes);
  const PF_ParamIndex index =
      (oddities & 2) != 0 ? bytes_.integer<A_long>() : bytes_.oneOf(kControls);
  PF_EventExtra event = session_.event(type, index, rectangle());
  if (type == PF_Event_DRAW) {
    event.u.draw.update_rect = rectangle();
  } else if (type == PF_Event_DO_CLICK) {
    event.u.do_click.screen_point = {coordinate(), coordinate()};
  } else {
    event.u.adjust_cursor.screen_point = {coordinate(), coordinate()};
  }
  PF_Context* const noContext = nullptr;
  if ((oddities & 4) != 0) event.effect_win.area = bytes_.integer<A_long>();
  if ((oddities & 8) != 0) event.evt_in_flags = bytes_.integer<A_long>();
  if ((oddities & 16) != 0) event.contextH = nullptr;
  if ((oddities & 32) != 0) event.contextH = const_cast<PF_Context**>(&noContext);
  if ((oddities & 64) != 0) event.effect_win.param_title_frame = event.effect_win.current_frame;
  NoPainter painter;
  PF_Err err = PF_Err_NONE;
  try {
    session_.send(event, (oddities & 128) != 0 ? nullptr : &painter);
  } catch (const hostkit::Error&) {  // of the host, by way of the module
    err = PF_Err_OUT_OF_MEMORY;
  }
  check(PF_Cmd_EVENT, err);
}

/// What another version, a crash, or a host that copies what it should flatten may leave in a
/// handle. The instance waits meanwhile.
void WildLayer::handOverForeignData() {
  hostkit::HandleTable& handles = session_.records().handles;
  PF_InData& in = session_.inData();
  const PF_Handle own = in.sequence_data;
  std::vector<std::uint8_t> data(40);
  if (own != nullptr && bytes_.flag()) {
    std::memcpy(data.data(), *own, data.size());  // a copy, which may be whole
    data[static_cast<std::size_t>(bytes_.integerIn(0, 39))] ^= bytes_.integer<std::uint8_t>();
  } else {
    const auto any = bytes_.take(data.size());
    std::ranges::copy(any, data.begin());
  }
  data.resize(static_cast<std::size_t>(bytes_.integerIn(1, 48)));
  const PF_Handle foreign = handles.allocate(data.size());
  if (foreign == nullptr) return;
  std::memcpy(*foreign, data.data(), data.size());
  in.sequence_data = foreign;
  switch (bytes_.integerIn(0, 5)) {
    case 0:
      render();
      break;
    case 1:
      sendEvent();
      break;
    case 2:
      sendMessage();
      break;
    case 3:
      call(PF_Cmd_SEQUENCE_FLATTEN);
      break;
    case 4:
      call(PF_Cmd_SEQUENCE_SETDOWN);
      break;
    default:
      call(PF_Cmd_SEQUENCE_RESETUP);
  }
  if (in.sequence_data != nullptr) handles.dispose(in.sequence_data);
  in.sequence_data = own;
}

void WildLayer::sendMessage() {
  switch (bytes_.integerIn(0, 5)) {
    case 0:
      return advance();
    case 1:
    case 2:
      return saveAndRestore();
    case 3:
      return setBackdrop();
    default:
      break;
  }
  // Any record; those that lead to memory are sent by the functions above.
  alignas(ProgramMessage) std::uint8_t room[sizeof(ProgramMessage) + 1];
  ProgramMessage message;
  const int oddities = bytes_.integer<std::uint8_t>();
  if ((oddities & 1) != 0) message.size = bytes_.integer<std::uint32_t>();
  if ((oddities & 2) != 0) message.magic ^= bytes_.integer<std::uint8_t>();
  if ((oddities & 4) != 0) message.version = bytes_.integer<std::uint8_t>();
  message.request = bytes_.flag() ? MessageRequest::UseOwnState : MessageRequest::UsePainting;
  if ((oddities & 8) != 0) message.request = static_cast<MessageRequest>(bytes_.integerIn(-1, 9));
  if (message.request == MessageRequest::UsePainting) {
    message.u.painting.threads = bytes_.oneOf({1, 2, 3, 4, 0, -1, 257, INT_MAX});
    const auto name = bytes_.flag() ? bytes_.take(sizeof message.u.painting.instructionSet)
                                    : std::span<const std::uint8_t>();
    std::ranges::copy(name, message.u.painting.instructionSet);
  }
  const bool isOdd = (oddities & 32) != 0;
  std::memcpy(room + (isOdd ? 1 : 0), &message, sizeof message);
  if (message.request == MessageRequest::Advance && !canAfford()) return;
  call(PF_Cmd_COMPLETELY_GENERAL, room + (isOdd ? 1 : 0));
}

void WildLayer::advance() {
  if (!canAfford()) return;
  World input = picture();
  session_.parameters().setInput(input.record());
  session_.inData().current_time = bytes_.integerIn(0, 9);
  ProgramMessage message;
  message.request = MessageRequest::Advance;
  message.u.advance = {bytes_.integerIn(-1, 40), bytes_.integerIn(-1, 40),
                       bytes_.oneOf({8, 16, 0, -8})};
  call(PF_Cmd_COMPLETELY_GENERAL, &message);
  session_.parameters().value(0).u.ld = {};
}

void WildLayer::saveAndRestore() {
  const auto ask = [&](MessageRequest request, std::vector<std::uint8_t>& buffer) {
    ProgramMessage message;
    message.request = request;
    message.u.state = {buffer.data(), buffer.size(), buffer.size()};
    call(PF_Cmd_COMPLETELY_GENERAL, &message);
    if (message.answer == MessageAnswer::BufferTooSmall) buffer.resize(message.u.state.size);
    return message.answer;
  };
  const auto save = [&] {
    std::vector<std::uint8_t> state;
    if (ask(MessageRequest::SaveState, state) != MessageAnswer::BufferTooSmall) return state;
    require(ask(MessageRequest::SaveState, state) == MessageAnswer::Done, "a state is saved");
    return state;
  };
  if (bytes_.flag()) {
    saved_ = save();
    return;
  }
  std::vector<std::uint8_t> given = saved_;
  if (bytes_.flag() && !given.empty()) {
    const auto at = bytes_.integer<std::uint16_t>() % given.size();
    given[at] ^= bytes_.integer<std::uint8_t>();
    if (bytes_.flag()) given.resize(at);
  }
  const std::vector<std::uint8_t> before = save();
  const bool isRestored = ask(MessageRequest::RestoreState, given) == MessageAnswer::Done;
  require(save() == (isRestored ? given : before), "a state is restored, or all is as it was");
}

void WildLayer::setBackdrop() {
  ProgramMessage message;
  message.request = MessageRequest::SetBackdrop;
  if (bytes_.integerIn(0, 3) == 0) {
    call(PF_Cmd_COMPLETELY_GENERAL, &message);
    return;
  }
  World world = picture();
  if (bytes_.flag()) spoil(world.record());
  const PF_EffectWorld record = world.record();
  message.u.backdrop.world = &record;
  call(PF_Cmd_COMPLETELY_GENERAL, &message);
  if (message.answer == MessageAnswer::Done) backdrops_.push_back(std::move(world));
}

}  // namespace fuzz
