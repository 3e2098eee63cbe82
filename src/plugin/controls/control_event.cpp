#include "plugin/controls/control_event.h"

#include "effect/parameters.h"
#include "plugin/controls/reported_suite.h"

namespace brisel {

PF_Err requestRedraw(ControlEvent& event) {
  PF_Err error = PF_Err_NONE;
  {
    const ReportedSuite<PFAppSuite6> app(event.in, event.out, error, kPFAppSuite,
                                         kPFAppSuiteVersion6);
    if (error == PF_Err_NONE) {
      error = app->PF_InvalidateRect(event.extra.contextH, &event.extra.effect_win.current_frame);
    }
  }
  if (error != PF_Err_NONE) return error;
  event.extra.evt_out_flags |= PF_EO_HANDLED_EVENT | PF_EO_UPDATE_NOW;
  if (event.paramCount > kInformation && event.params[kInformation] != nullptr) {
    event.params[kInformation]->uu.change_flags |= PF_ChangeFlag_CHANGED_VALUE;
  }
  return PF_Err_NONE;
}

}  // namespace brisel
