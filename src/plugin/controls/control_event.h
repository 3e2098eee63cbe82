// One event of a custom control, as the handlers share it.
#pragma once

#include <algorithm>

#include "plugin/sdk/codes.h"
#include "plugin/sdk/events.h"
#include "plugin/sdk/in_out_data.h"

namespace brisel {

struct ControlEvent {
  PF_InData& in;
  PF_OutData& out;
  PF_ParamDef* const* params;  // `paramCount` records, some of which may be null
  std::int32_t paramCount;
  PF_EventExtra& extra;
};

/// Clamps a host's coordinate to what layout arithmetic can hold.
inline std::int32_t boundedCoordinate(A_long coordinate) {
  constexpr A_long kFarthest = 1 << 20;
  return std::clamp(coordinate, -kFarthest, kFarthest);
}

struct ControlRect {
  std::int32_t left;
  std::int32_t top;
  std::int32_t right;
  std::int32_t bottom;
};

inline ControlRect boundedRect(const PF_LRect& rect) {
  return {boundedCoordinate(rect.left), boundedCoordinate(rect.top), boundedCoordinate(rect.right),
          boundedCoordinate(rect.bottom)};
}

struct ControlPoint {
  std::int32_t x;
  std::int32_t y;
};

inline ControlPoint boundedPoint(const PF_Point& point) {
  return {boundedCoordinate(point.h), boundedCoordinate(point.v)};
}

inline ControlRect updateRect(const ControlEvent& event) {
  return boundedRect(event.extra.u.draw.update_rect);
}
inline ControlRect currentFrame(const ControlEvent& event) {
  return boundedRect(event.extra.effect_win.current_frame);
}
inline ControlPoint hoverPoint(const ControlEvent& event) {
  return boundedPoint(event.extra.u.adjust_cursor.screen_point);
}
inline ControlPoint clickPoint(const ControlEvent& event) {
  return boundedPoint(event.extra.u.do_click.screen_point);
}

inline void markHandled(ControlEvent& event) {
  event.extra.evt_out_flags |= PF_EO_HANDLED_EVENT;
}

/// Invalidates the control's current frame and marks the event handled. Parameter 1 is marked
/// changed, so that the host notices. Returns the host's error, which then shows a message.
PF_Err requestRedraw(ControlEvent& event);

}  // namespace brisel
