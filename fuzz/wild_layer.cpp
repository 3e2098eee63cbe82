#include "wild_layer.h"

#include <algorithm>
#include <cfenv>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "effect/parameters.h"
#include "plugin/message/program_message.h"
#include "plugin/module_state.h"
#include "target.h"

namespace fuzz {
namespace {

using brisel::MessageAnswer;
using brisel::MessageRequest;
using brisel::ProgramMessage;
using hostkit::Depth;
using hostkit::World;

constexpr PF_Cmd kCommands[] = {PF_Cmd_ABOUT,
                                PF_Cmd_GLOBAL_SETUP,
                                PF_Cmd_GLOBAL_SETDOWN,
                                PF_Cmd_PARAMS_SETUP,
                                PF_Cmd_SEQUENCE_SETUP,
                                PF_Cmd_SEQUENCE_RESETUP,
                                PF_Cmd_SEQUENCE_FLATTEN,
                                PF_Cmd_DO_DIALOG,
                                PF_Cmd_FRAME_SETUP,
                                PF_Cmd_SEQUENCE_SETDOWN,
                                PF_Cmd_FRAME_SETDOWN,
                                PF_Cmd_RENDER,
                                PF_Cmd_EVENT,
                                PF_Cmd_UPDATE_PARAMS_UI,
                                PF_Cmd_USER_CHANGED_PARAM,
                                PF_Cmd_COMPLETELY_GENERAL};

/// The host's own way to round, which the module must neither use nor lose.
class HostsRounding {
 public:
  explicit HostsRounding(int mode) : mode_(mode) { std::fesetround(mode_); }
  ~HostsRounding() {
    const bool isKept = std::fegetround() == mode_;
    std::fesetround(FE_TONEAREST);
    require(isKept, "the host's rounding mode stays");
  }
  HostsRounding(const HostsRounding&) = delete;
  HostsRounding& operator=(const HostsRounding&) = delete;

 private:
  int mode_;
};

/// Looks at nothing: the pane itself checks what is handed to it.
class NoPainter : public hostkit::Painter {
 public:
  void fillRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&) override {}
  void strokeRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&, float) override {}
  void drawImage(const hostkit::PaintedImage&, const DRAWBOT_PointF32&, float) override {}
};

bool endsInstance(PF_Cmd cmd) {
  return cmd == PF_Cmd_SEQUENCE_FLATTEN || cmd == PF_Cmd_SEQUENCE_SETDOWN;
}

}  // namespace

WildLayer::WildLayer(Bytes& bytes, Work& work)
    : bytes_(bytes), work_(work), session_(EntryPointFunc) {
  if (bytes_.integerIn(0, 15) == 15) return;  // commands for which nothing is set up
  for (const PF_Cmd cmd : {PF_Cmd_GLOBAL_SETUP, PF_Cmd_PARAMS_SETUP, PF_Cmd_SEQUENCE_SETUP}) {
    require(call(cmd) == PF_Err_NONE, "the module is set up");
  }
  session_.parameters().resetToDefaults(24, 24);
}

WildLayer::~WildLayer() {
  mendHost();
  call(PF_Cmd_SEQUENCE_SETDOWN);
  require(session_.records().handles.liveHandles() == 0, "no handle is left");
}

void WildLayer::step() {
  switch (bytes_.integerIn(0, 15)) {
    case 0:
      return command();
    case 1:
      return commandOfPoorHost();
    case 2:
      return breakHost();
    case 3:
      return mendHost();
    case 4:
      return addMask();
    case 5:
      return handOverForeignData();
    case 6:
      return sendMessage();
    case 7:
    case 8:
      return sendEvent();
    case 9:
    case 10:
    case 11:
      return setParameter();
    default:
      return render();
  }
}

PF_Err WildLayer::call(PF_Cmd cmd, void* extra) {
  const PF_Err err = session_.call(cmd, extra);
  check(cmd, err);
  return err;
}

PF_Err WildLayer::callWith(PF_Cmd cmd, PF_ParamDef** params, PF_LayerDef* output, void* extra) {
  const HostsRounding rounding(bytes_.oneOf({FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}));
  const PF_Err err = session_.callWith(cmd, params, output, extra);
  check(cmd, err);
  return err;
}

void WildLayer::check(PF_Cmd cmd, PF_Err err) {
  const hostkit::HostRecords& records = session_.records();
  require(records.handles.balanced(), "locks come in pairs, of handles that there are");
  require(records.suites.balanced(), "suites are given back, and not used when they are not held");
  require(records.masks.balanced(), "masks are given back");
  require(records.pane.balanced(), "what was drawn with is given back");
  require(records.wrongEffectRefs == 0, "callbacks are those of the command");
  require(err == PF_Err_NONE || cmd != PF_Cmd_RENDER, "a render reports no error");
  const PF_OutData& out = session_.outData();
  require(std::memchr(out.return_msg, '\0', sizeof out.return_msg) != nullptr, "messages end");
  // Presets as the module's folder has them, but few: each instance reads them all.
  if (cmd == PF_Cmd_GLOBAL_SETUP) {
    brisel::moduleState().folders = brisel::deriveFolders(FEW_PRESETS);
  }
}

void WildLayer::command() {
  const PF_Cmd cmd = bytes_.flag() ? bytes_.oneOf(kCommands) : bytes_.integer<A_long>();
  const bool hasInstance = session_.inData().sequence_data != nullptr;
  if (cmd == PF_Cmd_SEQUENCE_SETUP && hasInstance) return;               // which would orphan it
  if (endsInstance(cmd)) session_.records().handles.refuseLocks(false);  // or its stars stay
  PF_UserChangedParamExtra changed{bytes_.flag() ? bytes_.integerIn(0, 82)
                                                 : bytes_.integer<A_long>()};
  if (cmd == PF_Cmd_USER_CHANGED_PARAM) {
    call(cmd, &changed);
  } else if (cmd != PF_Cmd_RENDER) {  // its output is gone
    call(cmd);
  } else {
    callWith(cmd, nullptr, nullptr, nullptr);
  }
}

/// A command of a host without something that every host has.
void WildLayer::commandOfPoorHost() {
  const PF_Cmd cmd = bytes_.oneOf(kCommands);
  PF_InData& in = session_.inData();
  if (endsInstance(cmd) || (cmd == PF_Cmd_SEQUENCE_SETUP && in.sequence_data != nullptr)) return;
  const PF_InData kept = in;
  PF_UtilCallbacks utils = *in.utils;
  void (*const withouts[])(PF_InData&) = {
      [](PF_InData& host) { host.utils = nullptr; },
      [](PF_InData& host) { host.pica_basicP = nullptr; },
      [](PF_InData& host) { host.inter = {}; },
      [](PF_InData& host) { host.inter.register_ui = nullptr; },
      [](PF_InData& host) { host.utils->ansi.strcpy = nullptr; },
      [](PF_InData& host) { host.utils->get_platform_data = nullptr; },
      [](PF_InData& host) { host.utils->host_get_handle_size = nullptr; },
      [](PF_InData& host) { host.utils->host_new_handle = nullptr; },
      [](PF_InData& host) { host.utils->host_lock_handle = nullptr; },
      [](PF_InData& host) { host.utils->host_unlock_handle = nullptr; },
      [](PF_InData& host) { host.utils->host_dispose_handle = nullptr; },
  };
  in.utils = &utils;
  if (cmd == PF_Cmd_PARAMS_SETUP) session_.parameters().clear();
  bytes_.oneOf(withouts)(in);
  const bool hasParams = bytes_.flag();
  callWith(cmd, hasParams ? session_.parameters().pointers() : nullptr, nullptr, nullptr);
  in.utils = kept.utils;
  in.pica_basicP = kept.pica_basicP;
  in.inter = kept.inter;
}

void WildLayer::setParameter() {
  hostkit::ParameterSet& parameters = session_.parameters();
  const int index = bytes_.integerIn(1, brisel::kParamCount - 1);
  if (index >= parameters.count()) return;
  const hostkit::Parameter& parameter = parameters.list()[static_cast<std::size_t>(index)];
  PF_ParamDef& record = parameters.value(index);
  const int how = bytes_.integerIn(0, 7);
  if (how == 0) {  // of the value's bytes, whatever the kind
    const std::int32_t numbers[] = {bytes_.integer<std::int32_t>(), bytes_.integer<std::int32_t>()};
    std::memcpy(&record.u, numbers, sizeof numbers);
  } else if (how == 1) {
    record.flags = bytes_.integer<A_long>();
  } else if (how == 2) {
    std::memset(record.name, bytes_.integer<std::uint8_t>(), sizeof record.name);  // without an end
  } else if (const auto range = how == 3 ? validRange(parameter) : sliderRange(parameter)) {
    const double share = bytes_.integer<std::uint16_t>() / 65535.0;
    const double number = range->min + share * (range->max - range->min);
    const bool isFixed = parameter.type() == PF_Param_FIX_SLIDER;
    record.u.sd.value = static_cast<A_long>(isFixed ? number * hostkit::kFixedOne : number);
  } else if (parameter.type() == PF_Param_POPUP) {
    record.u.pd.value = bytes_.integerIn(0, record.u.pd.num_choices + 1);
  } else if (parameter.type() == PF_Param_POINT) {
    record.u.td.x_value = bytes_.integerIn(-8, 40) * 65536;
    record.u.td.y_value = bytes_.integerIn(-8, 40) * 65536;
  } else {  // checkbox, mask; of an angle next to none, of a color the alpha
    record.u.sd.value = bytes_.integerIn(0, 4);
  }
}

void WildLayer::breakHost() {
  hostkit::HostRecords& records = session_.records();
  const int nth = bytes_.integerIn(0, 12);
  switch (bytes_.integerIn(0, 7)) {
    case 0:
      return records.handles.refuseAllocation(nth);
    case 1:
      return records.handles.refuseLocks(true);
    case 2:
      return records.suites.refuseAcquisition(nth);
    case 3:
      return records.masks.failCall(nth);
    case 4:
      return records.pane.failCall(nth);
    case 5:
      records.addParamErrorIndex = bytes_.integerIn(0, brisel::kParamCount);
      records.addParamError = bytes_.integer<A_long>();
      return;
    case 6:
      records.registerUIError = bytes_.integer<A_long>();
      return;
    default: {  // fewer than there are; 0 says nothing of their number
      const A_long count = records.parameters.count();
      const A_long told = std::min<A_long>(bytes_.integerIn(-1, brisel::kParamCount), count);
      session_.inData().num_params = told == 0 && count < brisel::kParamCount ? -1 : told;
    }
  }
}

void WildLayer::mendHost() {
  hostkit::HostRecords& records = session_.records();
  records.handles.refuseAllocation(0);
  records.handles.refuseLocks(false);
  records.suites.refuseAcquisition(0);
  records.masks.failCall(0);
  records.pane.failCall(0);
  records.addParamError = records.registerUIError = PF_Err_NONE;
  session_.inData().num_params = session_.parameters().count();
}

void WildLayer::addMask() {
  hostkit::MaskShape shape{.vertices = {}, .closed = bytes_.flag()};
  const bool isInverted = bytes_.flag();
  const bool isUsual = bytes_.flag();
  const auto number = [&] { return isUsual ? bytes_.integerIn(-10, 40) : double{bytes_.real()}; };
  shape.vertices.resize(static_cast<std::size_t>(bytes_.integerIn(0, 9)));
  for (PF_PathVertex& v : shape.vertices) {
    for (double* at : {&v.x, &v.y, &v.tan_in_x, &v.tan_in_y, &v.tan_out_x, &v.tan_out_y}) {
      *at = number();
    }
  }
  session_.records().masks.add([shape](const hostkit::MaskTime&) { return shape; }, isInverted);
}

/// Whether what is to be painted is little enough. Counts it.
bool WildLayer::canAfford() {
  constexpr A_long kMostStars = 100;
  hostkit::ParameterSet& parameters = session_.parameters();
  if (parameters.count() < brisel::kParamCount) return true;  // no star is
  A_long& stars = parameters.value(brisel::kMaximumNumberOfStars).u.sd.value;
  stars = std::min(stars, kMostStars);
  const std::int64_t rays = parameters.value(brisel::kRaysCount).u.sd.value;
  const std::int64_t spread = parameters.value(brisel::kRaysCountDispersion).u.fd.value;
  work_.mostRays = std::max(
      work_.mostRays, std::clamp<std::int64_t>(rays, 0, 1000) + 15 * std::abs(spread) / 6'553'600);
  work_.left -= kMostStars * (1 + work_.mostRays / 8);
  return work_.left > 0;
}

/// Of any size that is small, also none.
World WildLayer::picture() {
  const Depth depth = bytes_.flag() ? Depth::k16 : Depth::k8;
  const A_long padding = bytes_.integerIn(0, 9) * (depth == Depth::k16 ? 2 : 1);
  const A_long width = bytes_.integerIn(0, 40);
  const A_long height = bytes_.integerIn(0, 30);
  World world(width, height, depth, {.rowPadding = padding});
  const unsigned seed = bytes_.integer<std::uint8_t>();
  unsigned at = 0;
  for (std::uint8_t& byte : world.bytes()) {
    byte = static_cast<std::uint8_t>((++at * seed) >> 2);
    if (depth == Depth::k16 && at % 2 == 0) byte &= 0x7F;  // on the scale
  }
  return world;
}

/// Makes the world claim what cannot be, or less than it has.
void WildLayer::spoil(PF_EffectWorld& world) {
  const A_long any = bytes_.integer<A_long>();
  switch (bytes_.integerIn(0, 6)) {
    case 0:
      world.data = nullptr;
      break;
    case 1:
      world.width = any;  // more than its rows hold, or less
      break;
    case 2:
      world.rowbytes = std::min(any, world.rowbytes) & ~1;
      break;
    case 3:
      world.height = std::min(any, world.height);
      break;
    case 4:
      if (world.rowbytes % 2 == 0) world.world_flags ^= PF_WorldFlag_DEEP;
      break;
    case 5:
      world.world_flags ^= any & ~PF_WorldFlag_DEEP;
      break;
    default:
      world.extent_hint = {any, any, -1, any};
  }
}

void WildLayer::render() {
  if (!canAfford()) return;
  World input = picture();
  World output = picture();
  const std::vector<std::uint8_t> before(input.bytes().begin(), input.bytes().end());
  const unsigned oddities = bytes_.integer<std::uint8_t>();
  const auto scale = [&] { return PF_RationalScale{1, 1 + (oddities & 1u)}; };
  session_.prepareFrame(
      input, output,
      {.frame = bytes_.integerIn(0, 20), .downsampleX = scale(), .downsampleY = scale()});
  PF_InData& in = session_.inData();
  if ((oddities & 2) != 0) in.current_time = bytes_.integer<A_long>();
  if ((oddities & 4) != 0) in.width = bytes_.integer<A_long>();
  if ((oddities & 8) != 0) in.quality = bytes_.integer<A_long>();
  PF_EffectWorld& given = session_.parameters().value(0).u.ld;
  if ((oddities & 16) != 0) spoil(given);
  if ((oddities & 32) != 0) spoil(output.record());
  const bool isInPlace = (oddities & 64) != 0;
  if (isInPlace) given = output.record();

  const auto all = session_.parameters().pointersAt(in.downsample_x, in.downsample_y);
  std::vector<PF_ParamDef*> params(all, all + session_.parameters().count());
  if ((oddities & 128) != 0) {
    params[static_cast<std::size_t>(bytes_.integerIn(0, 255)) % params.size()] = nullptr;
  }
  callWith(PF_Cmd_RENDER, params.data(), &output.record(), nullptr);
  require(output.guardsIntact(), "nothing is written outside of the output");
  require(input.guardsIntact() && std::ranges::equal(before, input.bytes()),
          "the input is not written");
}

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
