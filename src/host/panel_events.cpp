#include "host/panel_events.h"

#include <algorithm>

#include "host/locked_handle.h"
#include "host/module_state.h"
#include "host/parameter_table.h"
#include "host/sequence_data.h"
#include "ui/panel.h"

namespace brisel {

PF_Err handleEvent(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_EventExtra& extra) {
  const std::int32_t paramCount =
      params == nullptr ? 0 : std::min<std::int32_t>(in.num_params, kParamCount);
  ControlEvent event{in, out, params, paramCount, extra};
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
