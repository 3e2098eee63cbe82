// The host's effect interface: events of the custom controls. Points and rectangles are in the
// pixels of the window the event happened in.
#pragma once

#include "plugin/sdk/base_types.h"

struct PF_DoClickEventInfo {
  A_u_long when;
  PF_Point screen_point;
  A_long num_clicks;
  A_long modifiers;
  A_intptr_t continue_refcon[4];
  PF_Boolean send_drag;
  PF_Boolean last_time;
};
static_assert(sizeof(PF_DoClickEventInfo) == 64);
static_assert(offsetof(PF_DoClickEventInfo, screen_point) == 4);
static_assert(offsetof(PF_DoClickEventInfo, num_clicks) == 12);
static_assert(offsetof(PF_DoClickEventInfo, modifiers) == 16);
static_assert(offsetof(PF_DoClickEventInfo, continue_refcon) == 24);
static_assert(offsetof(PF_DoClickEventInfo, send_drag) == 56);
static_assert(offsetof(PF_DoClickEventInfo, last_time) == 57);

struct PF_DrawEventInfo {
  PF_LRect update_rect;
  A_long depth;
};
static_assert(sizeof(PF_DrawEventInfo) == 20 && offsetof(PF_DrawEventInfo, depth) == 16);

struct PF_KeyDownEvent {
  A_u_long when;
  PF_Point screen_point;
  A_long keycode;
  A_long modifiers;
};
static_assert(sizeof(PF_KeyDownEvent) == 20 && offsetof(PF_KeyDownEvent, screen_point) == 4);
static_assert(offsetof(PF_KeyDownEvent, keycode) == 12);
static_assert(offsetof(PF_KeyDownEvent, modifiers) == 16);

struct PF_AdjustCursorEventInfo {
  PF_Point screen_point;
  A_long modifiers;
  A_long set_cursor;
};
static_assert(sizeof(PF_AdjustCursorEventInfo) == 16);
static_assert(offsetof(PF_AdjustCursorEventInfo, modifiers) == 8);
static_assert(offsetof(PF_AdjustCursorEventInfo, set_cursor) == 12);

union PF_EventUnion {
  PF_DoClickEventInfo do_click;
  PF_DrawEventInfo draw;
  PF_KeyDownEvent key_down;
  PF_AdjustCursorEventInfo adjust_cursor;
};
static_assert(sizeof(PF_EventUnion) == 64 && alignof(PF_EventUnion) == 8);

struct PF_EffectWindowInfo {
  PF_ParamIndex index;
  PF_EffectArea area;
  PF_LRect current_frame;
  PF_LRect param_title_frame;
  A_long horiz_offset;
};
static_assert(sizeof(PF_EffectWindowInfo) == 44 && offsetof(PF_EffectWindowInfo, area) == 4);
static_assert(offsetof(PF_EffectWindowInfo, current_frame) == 8);
static_assert(offsetof(PF_EffectWindowInfo, param_title_frame) == 24);
static_assert(offsetof(PF_EffectWindowInfo, horiz_offset) == 40);

struct PF_Context {
  A_u_long magic;
  PF_WindowType w_type;
  PF_Boolean reserved;
  A_intptr_t plugin_state[4];
  void* reserved_drawref;
  void* reserved1;
  void* reserved2;
};
using PF_ContextH = PF_Context**;
static_assert(sizeof(PF_Context) == 72 && offsetof(PF_Context, w_type) == 4);
static_assert(offsetof(PF_Context, reserved) == 8 && offsetof(PF_Context, plugin_state) == 16);
static_assert(offsetof(PF_Context, reserved_drawref) == 48);
static_assert(offsetof(PF_Context, reserved1) == 56 && offsetof(PF_Context, reserved2) == 64);

struct PF_EventCallbacks {
  void* refcon;
  void* functions[8];
};
static_assert(sizeof(PF_EventCallbacks) == 72 && offsetof(PF_EventCallbacks, functions) == 8);

// `extra` of PF_Cmd_EVENT. The callbacks are inline, as in the host's own declaration.
struct PF_EventExtra {
  PF_ContextH contextH;
  PF_EventType e_type;
  PF_EventUnion u;
  PF_EffectWindowInfo effect_win;
  PF_EventCallbacks cbs;
  PF_EventInFlags evt_in_flags;
  PF_EventOutFlags evt_out_flags;  // the effect adds bits
};
static_assert(sizeof(PF_EventExtra) == 208 && offsetof(PF_EventExtra, contextH) == 0);
static_assert(offsetof(PF_EventExtra, e_type) == 8 && offsetof(PF_EventExtra, u) == 16);
static_assert(offsetof(PF_EventExtra, effect_win) == 80 && offsetof(PF_EventExtra, cbs) == 128);
static_assert(offsetof(PF_EventExtra, evt_in_flags) == 200);
static_assert(offsetof(PF_EventExtra, evt_out_flags) == 204);
