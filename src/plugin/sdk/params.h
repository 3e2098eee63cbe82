// The host's effect interface: parameter definitions, which are also parameter values. Angles and
// point coordinates are 16.16 numbers of degrees and pixels; popup values count from 1.
#pragma once

#include "plugin/sdk/base_types.h"
#include "plugin/sdk/pixel.h"

struct PF_SliderDef {
  A_long value;
  A_char value_str[32];
  A_char value_desc[32];
  A_long valid_min;
  A_long valid_max;
  A_long slider_min;
  A_long slider_max;
  A_long dephault;
};
static_assert(sizeof(PF_SliderDef) == 88);
static_assert(offsetof(PF_SliderDef, value_str) == 4 && offsetof(PF_SliderDef, value_desc) == 36);
static_assert(offsetof(PF_SliderDef, valid_min) == 68 && offsetof(PF_SliderDef, valid_max) == 72);
static_assert(offsetof(PF_SliderDef, slider_min) == 76 && offsetof(PF_SliderDef, slider_max) == 80);
static_assert(offsetof(PF_SliderDef, dephault) == 84);

struct PF_FixedSliderDef {
  PF_Fixed value;
  A_char value_str[32];
  A_char value_desc[32];
  PF_Fixed valid_min;
  PF_Fixed valid_max;
  PF_Fixed slider_min;
  PF_Fixed slider_max;
  PF_Fixed dephault;
  A_short precision;  // decimals shown
  A_short display_flags;
};
static_assert(sizeof(PF_FixedSliderDef) == 92);
static_assert(offsetof(PF_FixedSliderDef, value_str) == 4);
static_assert(offsetof(PF_FixedSliderDef, value_desc) == 36);
static_assert(offsetof(PF_FixedSliderDef, valid_min) == 68);
static_assert(offsetof(PF_FixedSliderDef, valid_max) == 72);
static_assert(offsetof(PF_FixedSliderDef, slider_min) == 76);
static_assert(offsetof(PF_FixedSliderDef, slider_max) == 80);
static_assert(offsetof(PF_FixedSliderDef, dephault) == 84);
static_assert(offsetof(PF_FixedSliderDef, precision) == 88);
static_assert(offsetof(PF_FixedSliderDef, display_flags) == 90);

struct PF_AngleDef {
  PF_Fixed value;
  PF_Fixed dephault;
  PF_Fixed valid_min;
  PF_Fixed valid_max;
};
static_assert(sizeof(PF_AngleDef) == 16 && offsetof(PF_AngleDef, dephault) == 4);
static_assert(offsetof(PF_AngleDef, valid_min) == 8 && offsetof(PF_AngleDef, valid_max) == 12);

struct PF_CheckBoxDef {
  A_long value;
  PF_Boolean dephault;
  A_u_char reserved;
  A_short reserved1;
  const A_char* text;  // beside the box; must outlive the parameter
};
static_assert(sizeof(PF_CheckBoxDef) == 16 && offsetof(PF_CheckBoxDef, dephault) == 4);
static_assert(offsetof(PF_CheckBoxDef, reserved) == 5 && offsetof(PF_CheckBoxDef, reserved1) == 6);
static_assert(offsetof(PF_CheckBoxDef, text) == 8);

struct PF_ColorDef {
  PF_Pixel value;
  PF_Pixel dephault;
};
static_assert(sizeof(PF_ColorDef) == 8 && offsetof(PF_ColorDef, dephault) == 4);

struct PF_PointDef {
  PF_Fixed x_value;  // pixels
  PF_Fixed y_value;
  A_char reserved[3];
  PF_Boolean restrict_bounds;
  PF_Fixed x_dephault;  // percent of the layer's size
  PF_Fixed y_dephault;
};
static_assert(sizeof(PF_PointDef) == 20 && offsetof(PF_PointDef, y_value) == 4);
static_assert(offsetof(PF_PointDef, reserved) == 8);
static_assert(offsetof(PF_PointDef, restrict_bounds) == 11);
static_assert(offsetof(PF_PointDef, x_dephault) == 12 && offsetof(PF_PointDef, y_dephault) == 16);

struct PF_PopupDef {
  A_long value;
  A_short num_choices;
  A_short dephault;
  const A_char* names;  // items separated by '|'; must outlive the parameter
};
static_assert(sizeof(PF_PopupDef) == 16 && offsetof(PF_PopupDef, num_choices) == 4);
static_assert(offsetof(PF_PopupDef, dephault) == 6 && offsetof(PF_PopupDef, names) == 8);

struct PF_FloatSliderDef {
  PF_FpLong value;
  PF_FpLong phase;
  A_char value_desc[32];
  PF_FpShort valid_min;
  PF_FpShort valid_max;
  PF_FpShort slider_min;
  PF_FpShort slider_max;
  PF_FpShort dephault;
  A_short precision;
  A_short display_flags;
  A_u_long fs_flags;
  PF_FpShort curve_tolerance;
  PF_Boolean useExponent;
  PF_FpShort exponent;
};
static_assert(sizeof(PF_FloatSliderDef) == 88 && offsetof(PF_FloatSliderDef, phase) == 8);
static_assert(offsetof(PF_FloatSliderDef, value_desc) == 16);
static_assert(offsetof(PF_FloatSliderDef, valid_min) == 48);
static_assert(offsetof(PF_FloatSliderDef, valid_max) == 52);
static_assert(offsetof(PF_FloatSliderDef, slider_min) == 56);
static_assert(offsetof(PF_FloatSliderDef, slider_max) == 60);
static_assert(offsetof(PF_FloatSliderDef, dephault) == 64);
static_assert(offsetof(PF_FloatSliderDef, precision) == 68);
static_assert(offsetof(PF_FloatSliderDef, display_flags) == 70);
static_assert(offsetof(PF_FloatSliderDef, fs_flags) == 72);
static_assert(offsetof(PF_FloatSliderDef, curve_tolerance) == 76);
static_assert(offsetof(PF_FloatSliderDef, useExponent) == 80);
static_assert(offsetof(PF_FloatSliderDef, exponent) == 84);

struct PF_PathDef {
  PF_PathID path_id;
  A_long reserved0;
  PF_PathID dephault;  // 0 is no path
};
static_assert(sizeof(PF_PathDef) == 12 && offsetof(PF_PathDef, reserved0) == 4);
static_assert(offsetof(PF_PathDef, dephault) == 8);

// The layer comes first: it is the largest member, so that `PF_ParamDef def{}` clears all of it.
union PF_ParamDefUnion {
  PF_LayerDef ld;
  PF_SliderDef sd;
  PF_FixedSliderDef fd;
  PF_AngleDef ad;
  PF_CheckBoxDef bd;
  PF_ColorDef cd;
  PF_PointDef td;
  PF_PopupDef pd;
  PF_FloatSliderDef fs_d;
  PF_PathDef path_d;
};
static_assert(sizeof(PF_ParamDefUnion) == 120 && alignof(PF_ParamDefUnion) == 8);

struct PF_ParamDef {
  union {
    A_long id;
    PF_ChangeFlags change_flags;
  } uu;
  PF_ParamUIFlags ui_flags;
  A_short ui_width;
  A_short ui_height;
  PF_ParamType param_type;
  A_char name[32];  // 31 characters and the end
  PF_ParamFlags flags;
  A_long unused;
  PF_ParamDefUnion u;
};
static_assert(sizeof(PF_ParamDef) == 176);
static_assert(offsetof(PF_ParamDef, ui_flags) == 4);
static_assert(offsetof(PF_ParamDef, ui_width) == 8 && offsetof(PF_ParamDef, ui_height) == 10);
static_assert(offsetof(PF_ParamDef, param_type) == 12 && offsetof(PF_ParamDef, name) == 16);
static_assert(offsetof(PF_ParamDef, flags) == 48 && offsetof(PF_ParamDef, unused) == 52);
static_assert(offsetof(PF_ParamDef, u) == 56);

// `extra` of PF_Cmd_USER_CHANGED_PARAM.
struct PF_UserChangedParamExtra {
  PF_ParamIndex param_index;
};
static_assert(sizeof(PF_UserChangedParamExtra) == 4);

// What register_ui takes: which events the custom controls want. Sizes are pixels.
struct PF_CustomUIInfo {
  A_long reserved;
  PF_CustomEventFlags events;
  A_long comp_ui_width;
  A_long comp_ui_height;
  PF_UIAlignment comp_ui_alignment;
  A_long layer_ui_width;
  A_long layer_ui_height;
  PF_UIAlignment layer_ui_alignment;
  A_long preview_ui_width;
  A_long preview_ui_height;
  PF_UIAlignment preview_ui_alignment;
};
static_assert(sizeof(PF_CustomUIInfo) == 44 && offsetof(PF_CustomUIInfo, events) == 4);
static_assert(offsetof(PF_CustomUIInfo, comp_ui_width) == 8);
static_assert(offsetof(PF_CustomUIInfo, comp_ui_height) == 12);
static_assert(offsetof(PF_CustomUIInfo, comp_ui_alignment) == 16);
static_assert(offsetof(PF_CustomUIInfo, layer_ui_width) == 20);
static_assert(offsetof(PF_CustomUIInfo, layer_ui_height) == 24);
static_assert(offsetof(PF_CustomUIInfo, layer_ui_alignment) == 28);
static_assert(offsetof(PF_CustomUIInfo, preview_ui_width) == 32);
static_assert(offsetof(PF_CustomUIInfo, preview_ui_height) == 36);
static_assert(offsetof(PF_CustomUIInfo, preview_ui_alignment) == 40);
