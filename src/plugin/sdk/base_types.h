// The host's effect interface: base types. Declarations only, for 64-bit targets; every structure
// of this folder has the host's binary layout, asserted next to it. No behavior lives here.
#pragma once

#include <cstddef>
#include <cstdint>

using A_char = char;
using A_u_char = std::uint8_t;
using A_short = std::int16_t;
using A_u_short = std::uint16_t;
using A_long = std::int32_t;
using A_u_long = std::uint32_t;
using A_u_longlong = std::uint64_t;
using A_intptr_t = std::intptr_t;

using PF_Boolean = std::uint8_t;  // 0 or 1
using PF_Fixed = std::int32_t;    // 16.16
using PF_FpShort = float;
using PF_FpLong = double;
using PF_Err = std::int32_t;  // 0 is success
using SPErr = std::int32_t;   // 0 is success

using PF_ParamIndex = std::int32_t;
using PF_PathID = std::uint32_t;  // 0 is no path
using PF_Quality = std::int32_t;
using PF_Cmd = std::int32_t;
using PF_ParamType = std::int32_t;
using PF_ParamFlags = std::int32_t;
using PF_ParamUIFlags = std::int32_t;
using PF_ChangeFlags = std::int32_t;
using PF_OutFlags = std::int32_t;
using PF_WorldFlags = std::int32_t;
using PF_EventType = std::int32_t;
using PF_EventInFlags = std::int32_t;
using PF_EventOutFlags = std::int32_t;
using PF_WindowType = std::int32_t;
using PF_EffectArea = std::int32_t;
using PF_CustomEventFlags = std::int32_t;
using PF_UIAlignment = std::int32_t;

// Incomplete on purpose: the host alone knows what these point to.
using PF_ProgPtr = struct PF_ProgInfo*;
using PF_PathOutlinePtr = struct PF_PathOutline*;

// A relocatable block: points to the block's pointer. Use the address that locking returns.
using PF_Handle = void**;

struct PF_Point {
  A_long h;  // x
  A_long v;  // y
};
static_assert(sizeof(PF_Point) == 8 && offsetof(PF_Point, v) == 4);

struct PF_LRect {
  A_long left;
  A_long top;
  A_long right;   // exclusive
  A_long bottom;  // exclusive
};
using PF_Rect = PF_LRect;
static_assert(sizeof(PF_LRect) == 16 && offsetof(PF_LRect, top) == 4);
static_assert(offsetof(PF_LRect, right) == 8 && offsetof(PF_LRect, bottom) == 12);

struct PF_RationalScale {
  A_long num;
  A_u_long den;
};
static_assert(sizeof(PF_RationalScale) == 8 && offsetof(PF_RationalScale, den) == 4);

static_assert(sizeof(void*) == 8, "the interface is declared for 64-bit targets");
static_assert(sizeof(PF_Handle) == 8 && sizeof(PF_ProgPtr) == 8);
