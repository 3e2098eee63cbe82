#include "hostkit/session.h"

#include <algorithm>
#include <limits>

namespace hostkit {

PF_EventExtra Session::event(PF_EventType type, PF_ParamIndex index, const PF_Rect& control) {
  PF_EventExtra event{};
  event.contextH = &contextAt_;
  event.e_type = type;
  event.effect_win.index = index;
  event.effect_win.area = PF_EA_CONTROL;
  event.effect_win.current_frame = control;
  constexpr A_long kHighestTitle = std::numeric_limits<A_long>::min();  // an absurd pane is allowed
  const A_long titleTop = std::max(control.top, kHighestTitle + kTitleHeight) - kTitleHeight;
  event.effect_win.param_title_frame = {control.left, titleTop, control.right, control.top};
  return event;
}

EventReport Session::send(PF_EventExtra& event, Painter* painter) {
  records_.parameters.beginChanges();
  records_.pane.beginEvent(&contextAt_, event.e_type == PF_Event_DRAW, painter);
  const PF_Err err = call(PF_Cmd_EVENT, &event);
  records_.pane.endEvent();
  EventReport report{event.evt_out_flags, out_.out_flags, records_.parameters.endChanges(),
                     records_.pane.takeInvalidated()};
  throwIfFailed(PF_Cmd_EVENT, err, messageOf(out_));
  return report;
}

EventReport Session::draw(PF_ParamIndex index, const PF_Rect& control, Painter* painter) {
  PF_EventExtra drawing = event(PF_Event_DRAW, index, control);
  drawing.u.draw.update_rect = control;
  drawing.u.draw.depth = 32;
  return send(drawing, painter);
}

EventReport Session::hover(PF_ParamIndex index, const PF_Rect& control, PF_Point point) {
  PF_EventExtra hovering = event(PF_Event_ADJUST_CURSOR, index, control);
  hovering.u.adjust_cursor.screen_point = point;
  return send(hovering);
}

EventReport Session::click(PF_ParamIndex index, const PF_Rect& control, PF_Point point) {
  PF_EventExtra clicking = event(PF_Event_DO_CLICK, index, control);
  clicking.u.do_click.screen_point = point;
  clicking.u.do_click.num_clicks = 1;
  return send(clicking);
}

}  // namespace hostkit
