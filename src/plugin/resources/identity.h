// Who the module is to its host: what it reports at global set-up, and what the plug-in property
// list repeats. The effect's names are where its parameters are.
#pragma once

#include "plugin/sdk/codes.h"

namespace brisel {

inline constexpr char kEntryPointName[] = "EntryPointFunc";
inline constexpr char kModuleFileName[] = "VellixDrizzen_64.AEX";

/// Version 2, sub-version 0, fix level 0, stage develop, build 1.
inline constexpr A_u_long kEffectVersion = 0x00100001;

/// The host's interface version the effect is written for.
inline constexpr A_short kSpecVersionMajor = 13;
inline constexpr A_short kSpecVersionMinor = 2;

/// NON_PARAM_VARY: a frame depends on the stars of the frames before it.
inline constexpr PF_OutFlags kOutFlags =
    PF_OutFlag_NON_PARAM_VARY | PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING |
    PF_OutFlag_USE_OUTPUT_EXTENT | PF_OutFlag_PIX_INDEPENDENT | PF_OutFlag_CUSTOM_UI |
    PF_OutFlag_DEEP_COLOR_AWARE | PF_OutFlag_SEND_UPDATE_PARAMS_UI;
static_assert(kOutFlags == 0x06008454);

inline constexpr PF_OutFlags kOutFlags2 = PF_OutFlag2_PARAM_GROUP_START_COLLAPSED_FLAG;

}  // namespace brisel
