#include "hostkit/session.h"

#include <cstring>
#include <limits>

#include "hostkit/path_suites.h"
#include "hostkit/ui_suites.h"

namespace hostkit {

namespace {

constexpr PF_SpecVersion kInterfaceVersion{13, 2};

bool takesParams(PF_Cmd cmd) {
  return cmd != PF_Cmd_ABOUT && cmd != PF_Cmd_GLOBAL_SETUP && cmd != PF_Cmd_GLOBAL_SETDOWN &&
         cmd != PF_Cmd_PARAMS_SETUP;
}

bool isOfFrame(PF_Cmd cmd) {
  return cmd == PF_Cmd_FRAME_SETUP || cmd == PF_Cmd_RENDER || cmd == PF_Cmd_FRAME_SETDOWN ||
         cmd == PF_Cmd_COMPLETELY_GENERAL;
}

A_long timeOf(const RenderRequest& request) {
  const std::int64_t time = std::int64_t{request.frame} * request.rateDen;
  if (time < std::numeric_limits<A_long>::min() || time > std::numeric_limits<A_long>::max()) {
    throw Error("frame " + std::to_string(request.frame) + " lies beyond the host's time");
  }
  return static_cast<A_long>(time);
}

}  // namespace

std::string commandName(PF_Cmd cmd) {
  switch (cmd) {
    case PF_Cmd_ABOUT:
      return "about";
    case PF_Cmd_GLOBAL_SETUP:
      return "global set-up";
    case PF_Cmd_GLOBAL_SETDOWN:
      return "global set-down";
    case PF_Cmd_PARAMS_SETUP:
      return "parameter set-up";
    case PF_Cmd_SEQUENCE_SETUP:
      return "sequence set-up";
    case PF_Cmd_SEQUENCE_RESETUP:
      return "sequence re-set-up";
    case PF_Cmd_SEQUENCE_FLATTEN:
      return "sequence flatten";
    case PF_Cmd_SEQUENCE_SETDOWN:
      return "sequence set-down";
    case PF_Cmd_FRAME_SETUP:
      return "frame set-up";
    case PF_Cmd_RENDER:
      return "render";
    case PF_Cmd_FRAME_SETDOWN:
      return "frame set-down";
    case PF_Cmd_UPDATE_PARAMS_UI:
      return "parameter-UI update";
    case PF_Cmd_EVENT:
      return "event";
    case PF_Cmd_COMPLETELY_GENERAL:
      return "message";
    default:
      return "command " + std::to_string(cmd);
  }
}

Session::Session(EntryPoint entry) : entry_(entry), utils_(utilCallbacks()), basic_(basicSuite()) {
  in_.inter = interactCallbacks();
  in_.utils = &utils_;
  in_.pica_basicP = &basic_;
  in_.version = kInterfaceVersion;
  records_.suites.offer({kPFPathQuerySuite, kPFPathQuerySuiteVersion1}, &pathQuerySuite());
  records_.suites.offer({kPFPathDataSuite, kPFPathDataSuiteVersion1}, &pathDataSuite());
  offerUiSuites(records_.suites);
  context_.w_type = PF_Window_EFFECT;
  in_.num_params = records_.parameters.count();
}

Session::~Session() {
  try {
    close();
  } catch (const Error&) {  // there is nobody left to tell
  }
}

void Session::open() {
  callOrThrow(PF_Cmd_GLOBAL_SETUP);
  callOrThrow(PF_Cmd_PARAMS_SETUP);
  callOrThrow(PF_Cmd_SEQUENCE_SETUP);
}

void Session::close() {
  if (sequenceOpen_) callOrThrow(PF_Cmd_SEQUENCE_SETDOWN);
  if (globalOpen_) callOrThrow(PF_Cmd_GLOBAL_SETDOWN);
}

void Session::render(World& input, World& output, const RenderRequest& request) {
  prepareFrame(input, output, request);
  if (parameters().takeChanged()) callOrThrow(PF_Cmd_UPDATE_PARAMS_UI);
  callOrThrow(PF_Cmd_FRAME_SETUP);
  const PF_Err err = call(PF_Cmd_RENDER);
  const std::string message = messageOf(out_);
  callOrThrow(PF_Cmd_FRAME_SETDOWN);
  throwIfFailed(PF_Cmd_RENDER, err, message);
}

void Session::flatten() {
  callOrThrow(PF_Cmd_SEQUENCE_FLATTEN);
}

void Session::resetup() {
  callOrThrow(PF_Cmd_SEQUENCE_RESETUP);
}

void Session::updateParamsUI() {
  callOrThrow(PF_Cmd_UPDATE_PARAMS_UI);
}

void Session::setLayerSize(A_long width, A_long height) {
  in_.width = width;
  in_.height = height;
}

std::string Session::about() {
  callOrThrow(PF_Cmd_ABOUT);
  return messageOf(out_);
}

void Session::prepareFrame(World& input, World& output, const RenderRequest& request) {
  prepareFrame(input, {output.width(), output.height(), output.depth()}, request);
  output_ = &output.record();
  output_->world_flags |= PF_WorldFlag_WRITEABLE;
}

void Session::prepareFrame(World& input, const OutputShape& output, const RenderRequest& request) {
  records_.parameters.setInput(input.record());
  in_.quality = request.quality;
  in_.current_time = timeOf(request);
  in_.time_step = request.rateDen;
  in_.local_time_step = request.rateDen;
  in_.time_scale = request.rateNum;
  in_.width = request.layerWidth != 0 ? request.layerWidth : output.width;
  in_.height = request.layerHeight != 0 ? request.layerHeight : output.height;
  in_.extent_hint = {0, 0, output.width, output.height};
  in_.downsample_x = request.downsampleX;
  in_.downsample_y = request.downsampleY;
  in_.pixel_aspect_ratio = {1, 1};
  records_.masks.setDownsample(request.downsampleX, request.downsampleY);
}

PF_Err Session::call(PF_Cmd cmd, void* extra) {
  if (cmd == PF_Cmd_PARAMS_SETUP) records_.parameters.clear();
  PF_ParamDef** params = nullptr;
  if (isOfFrame(cmd)) {
    params = records_.parameters.pointersAt(in_.downsample_x, in_.downsample_y);
  } else if (takesParams(cmd)) {
    params = records_.parameters.pointers();
  }
  return callWith(cmd, params, cmd == PF_Cmd_RENDER ? output_ : nullptr, extra);
}

PF_Err Session::callWith(PF_Cmd cmd, PF_ParamDef** params, PF_LayerDef* output, void* extra) {
  const CurrentHost current(records_);
  // A host promises no more than that the reference is the running command's.
  in_.effect_ref = reinterpret_cast<PF_ProgPtr>(++effectRefs_);
  records_.effectRef = in_.effect_ref;
  out_ = {};
  out_.global_data = in_.global_data;
  out_.sequence_data = in_.sequence_data;
  out_.frame_data = in_.frame_data;

  const PF_Err err = entry_(cmd, &in_, &out_, params, output, extra);

  in_.global_data = out_.global_data;
  in_.sequence_data = out_.sequence_data;
  in_.frame_data = out_.frame_data;
  // A refused parameter ends the set-up with fewer than the module meant to have.
  if (cmd == PF_Cmd_PARAMS_SETUP) in_.num_params = records_.parameters.count();
  if (err == PF_Err_NONE) noteSuccess(cmd);
  return err;
}

void Session::noteSuccess(PF_Cmd cmd) {
  switch (cmd) {
    case PF_Cmd_GLOBAL_SETUP:
      globalOpen_ = true;
      report_.version = out_.my_version;
      report_.outFlags = out_.out_flags;
      report_.outFlags2 = out_.out_flags2;
      break;
    case PF_Cmd_GLOBAL_SETDOWN:
      globalOpen_ = false;
      break;
    case PF_Cmd_PARAMS_SETUP:
      report_.numParams = out_.num_params;
      break;
    case PF_Cmd_SEQUENCE_SETUP:
    case PF_Cmd_SEQUENCE_RESETUP:
      sequenceOpen_ = true;
      break;
    case PF_Cmd_SEQUENCE_SETDOWN:
      sequenceOpen_ = false;
      break;
    default:
      break;
  }
}

void Session::callOrThrow(PF_Cmd cmd, void* extra) {
  const PF_Err err = call(cmd, extra);
  throwIfFailed(cmd, err, messageOf(out_));
}

std::string Session::messageOf(const PF_OutData& out) {
  return {out.return_msg, strnlen(out.return_msg, sizeof out.return_msg)};
}

void Session::throwIfFailed(PF_Cmd cmd, PF_Err err, const std::string& message) {
  if (err == PF_Err_NONE) return;
  throw Error("the effect module answered " + commandName(cmd) + " with error " +
              std::to_string(err) + (message.empty() ? "" : ": " + message));
}

}  // namespace hostkit
