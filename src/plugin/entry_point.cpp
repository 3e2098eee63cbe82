// The module's one exported function: takes the host's commands to their handlers.
#include "plugin/sdk/entry_point.h"

#include <cstdio>

#include "core/floating_point_guard.h"
#include "plugin/controls/panel.h"
#include "plugin/host_parameters.h"
#include "plugin/messages.h"
#include "plugin/module_state.h"
#include "plugin/params_setup.h"
#include "plugin/render_driver.h"
#include "plugin/resources/identity.h"
#include "plugin/sdk/codes.h"
#include "plugin/sequence_data.h"

#if defined(_WIN32)
#define BRISEL_EXPORT __declspec(dllexport)
#else
#define BRISEL_EXPORT __attribute__((visibility("default")))
#endif

namespace brisel {
namespace {

PF_Err showAbout(PF_OutData& out) {
  std::snprintf(out.return_msg, sizeof out.return_msg,
                "Corvane - Brisel 2.0\r"
                "Stars that leave points, paths and circles, shine, drift, fade and burst.\r"
                "Instruction set: %s",
                moduleState().drawing.painter.kernels().name);
  return PF_Err_NONE;
}

PF_Err setUpGlobally(PF_OutData& out) {
  ModuleState& module = moduleState();
  module.folders = findFolders();
  LoadGreyTexture(module.greyTexture, 999, 30, 30, 1.0f);
  out.my_version = kEffectVersion;
  out.out_flags = kOutFlags;
  out.out_flags2 = kOutFlags2;
  return PF_Err_NONE;
}

PF_Err updateChangedParameter(const PF_InData& in, PF_ParamDef* const* params, const void* extra) {
  if (extra != nullptr && hasAllParameters(in, params)) {
    const auto& changed = *static_cast<const PF_UserChangedParamExtra*>(extra);
    updateParameterUI(in, params, readValues(params), changed.param_index);
  }
  return PF_Err_NONE;
}

PF_Err updateParameters(const PF_InData& in, PF_ParamDef* const* params) {
  if (hasAllParameters(in, params)) updateAllParameterUI(in, params, readValues(params));
  return PF_Err_NONE;
}

/// Events of the custom controls; `params` and its records may be null.
PF_Err handleEvent(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_EventExtra& extra) {
  ControlEvent event{in, out, params, suppliedParameters(in, params), extra};
  const LockedSequence locked(in, in.sequence_data);
  const SequenceState* sequence = locked.get();
  InstanceExtras* extras = sequence != nullptr ? sequence->extras : nullptr;
  OwnDrawing* own = extras != nullptr ? extras->own.get() : nullptr;
  ModuleState& module = moduleState();
  PanelState panel{module.header, own != nullptr ? own->state.frameSize : module.drawing.frameSize,
                   module.folders.presetRootFolder, nullptr, nullptr};
  if (extras != nullptr) {
    panel.emitterPresets = &extras->presetLists[kEmitterPresetList];
    panel.starPresets = &extras->presetLists[kStarPresetList];
  }
  return handlePanelEvent(event, panel);
}

PF_Err dispatch(PF_Cmd command, PF_InData& in, PF_OutData& out, PF_ParamDef* params[],
                PF_LayerDef* output, void* extra) {
  switch (command) {
    case PF_Cmd_ABOUT:
      return showAbout(out);
    case PF_Cmd_GLOBAL_SETUP:
      return setUpGlobally(out);
    case PF_Cmd_PARAMS_SETUP:
      return setUpParameters(in, out);
    case PF_Cmd_SEQUENCE_SETUP:
      return createSequence(in, out);
    case PF_Cmd_SEQUENCE_RESETUP:
      return in.sequence_data == nullptr ? createSequence(in, out) : PF_Err_NONE;
    case PF_Cmd_SEQUENCE_FLATTEN:
    case PF_Cmd_SEQUENCE_SETDOWN:
      return releaseSequence(in, out);
    case PF_Cmd_RENDER:
      return output == nullptr ? PF_Err_NONE : renderFrame(in, out, params, *output);
    case PF_Cmd_USER_CHANGED_PARAM:
      return updateChangedParameter(in, params, extra);
    case PF_Cmd_UPDATE_PARAMS_UI:
      return updateParameters(in, params);
    case PF_Cmd_EVENT:
      if (extra == nullptr) return PF_Err_NONE;
      return handleEvent(in, out, params, *static_cast<PF_EventExtra*>(extra));
    case PF_Cmd_COMPLETELY_GENERAL:
      answerMessage(in, out, params, extra);
      return PF_Err_NONE;
    default:
      return PF_Err_NONE;
  }
}

}  // namespace
}  // namespace brisel

extern "C" BRISEL_EXPORT PF_Err EntryPointFunc(PF_Cmd command, PF_InData* in, PF_OutData* out,
                                               PF_ParamDef* params[], PF_LayerDef* output,
                                               void* extra) {
  if (in == nullptr || out == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
  const brisel::FloatingPointGuard floatingPoint;
  try {
    return brisel::dispatch(command, *in, *out, params, output, extra);
  } catch (...) {
    return PF_Err_NONE;  // the only failure here is lack of memory, of which hosts are not told
  }
}
