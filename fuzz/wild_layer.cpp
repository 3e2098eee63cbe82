#include "wild_layer.h"

#include <algorithm>
#include <cfenv>
#include <cstring>

#include "effect/parameters.h"
#include "plugin/module_state.h"
#include "target.h"

namespace fuzz {
namespace {

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

}  // namespace fuzz
