#include "plugin/controls/panel.h"

#include "effect/parameters.h"
#include "plugin/controls/preset_row.h"

namespace brisel {
namespace {

/// Whether the event happened in the effect controls, to a custom control that stands open.
bool concernsPanel(const ControlEvent& event) {
  const PF_EventExtra& extra = event.extra;
  if (extra.contextH == nullptr || *extra.contextH == nullptr ||
      (*extra.contextH)->w_type != PF_Window_EFFECT) {
    return false;
  }
  const PF_ParamIndex index = extra.effect_win.index;
  if (index != kInformation && index != kEmitterPresets && index != kStarPresets) return false;
  if (index >= event.paramCount || event.params[index] == nullptr) return false;
  return (event.params[index]->flags & PF_ParamFlag_COLLAPSE_TWIRLY) == 0;
}

bool mayDraw(const PF_EventExtra& extra) {
  return (extra.evt_in_flags & PF_EI_DONT_DRAW) == 0 && extra.effect_win.area == PF_EA_CONTROL;
}

PF_Err handleHeader(ControlEvent& event, const PanelState& panel) {
  switch (event.extra.e_type) {
    case PF_Event_DO_CLICK:
      return clickHeader(event, panel.presetRootFolder);
    case PF_Event_DRAW:
      return mayDraw(event.extra) ? drawHeader(event, panel.header) : PF_Err_NONE;
    case PF_Event_ADJUST_CURSOR:
      return hoverHeader(event, panel.header);
    default:
      return PF_Err_NONE;
  }
}

PF_Err handleRow(ControlEvent& event, PresetList& list, FrameSize& frameSize) {
  switch (event.extra.e_type) {
    case PF_Event_DO_CLICK:
      return clickPresetRow(event, list, frameSize);
    case PF_Event_DRAW:
      return mayDraw(event.extra) ? drawPresetRow(event, list) : PF_Err_NONE;
    case PF_Event_ADJUST_CURSOR:
      return hoverPresetRow(event, list);
    default:
      return PF_Err_NONE;
  }
}

}  // namespace

PF_Err handlePanelEvent(ControlEvent& event, const PanelState& panel) {
  if (!concernsPanel(event)) return PF_Err_NONE;
  if (event.extra.effect_win.index == kInformation) return handleHeader(event, panel);
  PresetList* list =
      event.extra.effect_win.index == kEmitterPresets ? panel.emitterPresets : panel.starPresets;
  return list == nullptr ? PF_Err_NONE : handleRow(event, *list, panel.frameSize);
}

}  // namespace brisel
