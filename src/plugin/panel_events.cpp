#include "plugin/panel_events.h"

#include "plugin/controls/panel.h"
#include "plugin/host_parameters.h"
#include "plugin/locked_handle.h"
#include "plugin/module_state.h"
#include "plugin/sequence_data.h"

namespace brisel {

PF_Err handleEvent(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_EventExtra& extra) {
  ControlEvent event{in, out, params, suppliedParameters(in, params), extra};
  ModuleState& module = moduleState();
  PanelState panel{module.header, module.frameSize, module.folders.presetRootFolder, nullptr,
                   nullptr};
  if (!hasHandleCallbacks(in)) return handlePanelEvent(event, panel);
  const LockedHandle locked(*in.utils, in.sequence_data);
  const auto* state = static_cast<const SequenceState*>(locked.get());
  if (state != nullptr && state->presetLists != nullptr) {
    panel.emitterPresets = &state->presetLists[kEmitterPresetList];
    panel.starPresets = &state->presetLists[kStarPresetList];
  }
  return handlePanelEvent(event, panel);
}

}  // namespace brisel
