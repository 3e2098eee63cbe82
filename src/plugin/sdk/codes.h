// The host's effect interface: command, error, type and flag values under the host's names.
#pragma once

#include "plugin/sdk/base_types.h"

inline constexpr PF_Cmd PF_Cmd_ABOUT = 0;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETUP = 1;
inline constexpr PF_Cmd PF_Cmd_GLOBAL_SETDOWN = 3;
inline constexpr PF_Cmd PF_Cmd_PARAMS_SETUP = 4;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETUP = 5;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_RESETUP = 6;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_FLATTEN = 7;
inline constexpr PF_Cmd PF_Cmd_SEQUENCE_SETDOWN = 8;
inline constexpr PF_Cmd PF_Cmd_DO_DIALOG = 9;
inline constexpr PF_Cmd PF_Cmd_FRAME_SETUP = 10;
inline constexpr PF_Cmd PF_Cmd_RENDER = 11;
inline constexpr PF_Cmd PF_Cmd_FRAME_SETDOWN = 12;
inline constexpr PF_Cmd PF_Cmd_USER_CHANGED_PARAM = 13;
inline constexpr PF_Cmd PF_Cmd_UPDATE_PARAMS_UI = 14;
inline constexpr PF_Cmd PF_Cmd_EVENT = 15;
inline constexpr PF_Cmd PF_Cmd_COMPLETELY_GENERAL = 17;

inline constexpr PF_Err PF_Err_NONE = 0;
inline constexpr PF_Err PF_Err_OUT_OF_MEMORY = 4;
inline constexpr PF_Err PF_Err_INTERNAL_STRUCT_DAMAGED = 512;
inline constexpr PF_Err PF_Err_INVALID_INDEX = 513;
inline constexpr PF_Err PF_Err_UNRECOGNIZED_PARAM_TYPE = 514;
inline constexpr PF_Err PF_Err_INVALID_CALLBACK = 515;
inline constexpr PF_Err PF_Err_BAD_CALLBACK_PARAM = 516;
inline constexpr PF_Err PF_Interrupt_CANCEL = 517;

inline constexpr PF_ParamType PF_Param_LAYER = 0;
inline constexpr PF_ParamType PF_Param_SLIDER = 1;
inline constexpr PF_ParamType PF_Param_FIX_SLIDER = 2;
inline constexpr PF_ParamType PF_Param_ANGLE = 3;
inline constexpr PF_ParamType PF_Param_CHECKBOX = 4;
inline constexpr PF_ParamType PF_Param_COLOR = 5;
inline constexpr PF_ParamType PF_Param_POINT = 6;
inline constexpr PF_ParamType PF_Param_POPUP = 7;
inline constexpr PF_ParamType PF_Param_CUSTOM = 8;
inline constexpr PF_ParamType PF_Param_NO_DATA = 9;
inline constexpr PF_ParamType PF_Param_FLOAT_SLIDER = 10;
inline constexpr PF_ParamType PF_Param_ARBITRARY_DATA = 11;
inline constexpr PF_ParamType PF_Param_PATH = 12;
inline constexpr PF_ParamType PF_Param_GROUP_START = 13;
inline constexpr PF_ParamType PF_Param_GROUP_END = 14;
inline constexpr PF_ParamType PF_Param_BUTTON = 15;
inline constexpr PF_ParamType PF_Param_POINT_3D = 18;

inline constexpr PF_WorldFlags PF_WorldFlag_DEEP = 1 << 0;  // 16 bits per channel
inline constexpr PF_WorldFlags PF_WorldFlag_WRITEABLE = 1 << 1;

inline constexpr PF_Quality PF_Quality_DRAWING_AUDIO = -1;
inline constexpr PF_Quality PF_Quality_LO = 0;
inline constexpr PF_Quality PF_Quality_HI = 1;

inline constexpr PF_ParamFlags PF_ParamFlag_CANNOT_TIME_VARY = 1 << 1;
inline constexpr PF_ParamFlags PF_ParamFlag_CANNOT_INTERP = 1 << 2;
inline constexpr PF_ParamFlags PF_ParamFlag_COLLAPSE_TWIRLY = 1 << 5;
inline constexpr PF_ParamFlags PF_ParamFlag_SUPERVISE = 1 << 6;
inline constexpr PF_ParamFlags PF_ParamFlag_START_COLLAPSED = 1 << 7;

inline constexpr PF_ParamUIFlags PF_PUI_TOPIC = 1 << 0;
inline constexpr PF_ParamUIFlags PF_PUI_CONTROL = 1 << 1;
inline constexpr PF_ParamUIFlags PF_PUI_STD_CONTROL_ONLY = 1 << 2;
inline constexpr PF_ParamUIFlags PF_PUI_NO_ECW_UI = 1 << 3;
inline constexpr PF_ParamUIFlags PF_PUI_DISABLED = 1 << 5;

inline constexpr PF_ChangeFlags PF_ChangeFlag_CHANGED_VALUE = 1 << 0;

inline constexpr PF_OutFlags PF_OutFlag_NON_PARAM_VARY = 1 << 2;
inline constexpr PF_OutFlags PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING = 1 << 4;
inline constexpr PF_OutFlags PF_OutFlag_USE_OUTPUT_EXTENT = 1 << 6;
inline constexpr PF_OutFlags PF_OutFlag_DISPLAY_ERROR_MESSAGE = 1 << 8;
inline constexpr PF_OutFlags PF_OutFlag_PIX_INDEPENDENT = 1 << 10;
inline constexpr PF_OutFlags PF_OutFlag_CUSTOM_UI = 1 << 15;
inline constexpr PF_OutFlags PF_OutFlag_REFRESH_UI = 1 << 17;
inline constexpr PF_OutFlags PF_OutFlag_DEEP_COLOR_AWARE = 1 << 25;
inline constexpr PF_OutFlags PF_OutFlag_SEND_UPDATE_PARAMS_UI = 1 << 26;

inline constexpr PF_OutFlags PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG = 1 << 3;

inline constexpr PF_EventType PF_Event_NONE = -1;
inline constexpr PF_EventType PF_Event_NEW_CONTEXT = 0;
inline constexpr PF_EventType PF_Event_ACTIVATE = 1;
inline constexpr PF_EventType PF_Event_DO_CLICK = 2;
inline constexpr PF_EventType PF_Event_DRAG = 3;
inline constexpr PF_EventType PF_Event_DRAW = 4;
inline constexpr PF_EventType PF_Event_DEACTIVATE = 5;
inline constexpr PF_EventType PF_Event_CLOSE_CONTEXT = 6;
inline constexpr PF_EventType PF_Event_IDLE = 7;
inline constexpr PF_EventType PF_Event_ADJUST_CURSOR = 9;
inline constexpr PF_EventType PF_Event_KEYDOWN = 10;
inline constexpr PF_EventType PF_Event_MOUSE_EXITED = 11;

inline constexpr PF_EventInFlags PF_EI_DONT_DRAW = 1 << 0;

inline constexpr PF_EventOutFlags PF_EO_HANDLED_EVENT = 1 << 0;
inline constexpr PF_EventOutFlags PF_EO_ALWAYS_UPDATE = 1 << 1;
inline constexpr PF_EventOutFlags PF_EO_NEVER_UPDATE = 1 << 2;
inline constexpr PF_EventOutFlags PF_EO_UPDATE_NOW = 1 << 3;

inline constexpr PF_EffectArea PF_EA_NONE = 0;
inline constexpr PF_EffectArea PF_EA_PARAM_TITLE = 1;
inline constexpr PF_EffectArea PF_EA_CONTROL = 2;

inline constexpr PF_WindowType PF_Window_NONE = -1;
inline constexpr PF_WindowType PF_Window_COMP = 0;
inline constexpr PF_WindowType PF_Window_LAYER = 1;
inline constexpr PF_WindowType PF_Window_EFFECT = 2;
inline constexpr PF_WindowType PF_Window_PREVIEW = 3;

inline constexpr PF_CustomEventFlags PF_CustomEFlag_COMP = 1 << 0;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_LAYER = 1 << 1;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_EFFECT = 1 << 2;
inline constexpr PF_CustomEventFlags PF_CustomEFlag_PREVIEW = 1 << 3;

inline constexpr PF_UIAlignment PF_UIAlignment_NONE = 0;

inline constexpr A_long PF_PlatData_MAIN_WND = 0;
