// The host's effect interface: pixels and the worlds (rectangles of pixels) that hold them.
#pragma once

#include "plugin/sdk/base_types.h"

struct PF_Pixel {
  A_u_char alpha;
  A_u_char red;
  A_u_char green;
  A_u_char blue;
};
static_assert(sizeof(PF_Pixel) == 4 && offsetof(PF_Pixel, alpha) == 0);
static_assert(offsetof(PF_Pixel, red) == 1 && offsetof(PF_Pixel, green) == 2);
static_assert(offsetof(PF_Pixel, blue) == 3);

// Full scale is 32768, not 65535.
struct PF_Pixel16 {
  A_u_short alpha;
  A_u_short red;
  A_u_short green;
  A_u_short blue;
};
static_assert(sizeof(PF_Pixel16) == 8 && offsetof(PF_Pixel16, alpha) == 0);
static_assert(offsetof(PF_Pixel16, red) == 2 && offsetof(PF_Pixel16, green) == 4);
static_assert(offsetof(PF_Pixel16, blue) == 6);

struct PF_EffectWorld {
  void* reserved0;
  void* reserved1;
  PF_WorldFlags world_flags;
  PF_Pixel* data;   // PF_Pixel16 when PF_WorldFlag_DEEP is set
  A_long rowbytes;  // bytes from one row to the next, padding included
  A_long width;     // pixels
  A_long height;    // rows
  PF_LRect extent_hint;
  void* platform_ref;
  A_long reserved_long1;
  void* reserved_long4;
  PF_RationalScale pix_aspect_ratio;
  void* reserved_long2;
  A_long origin_x;
  A_long origin_y;
  A_long reserved_long3;
  A_long dephault;
};
using PF_LayerDef = PF_EffectWorld;

static_assert(sizeof(PF_EffectWorld) == 120);
static_assert(offsetof(PF_EffectWorld, reserved1) == 8);
static_assert(offsetof(PF_EffectWorld, world_flags) == 16);
static_assert(offsetof(PF_EffectWorld, data) == 24);
static_assert(offsetof(PF_EffectWorld, rowbytes) == 32);
static_assert(offsetof(PF_EffectWorld, width) == 36);
static_assert(offsetof(PF_EffectWorld, height) == 40);
static_assert(offsetof(PF_EffectWorld, extent_hint) == 44);
static_assert(offsetof(PF_EffectWorld, platform_ref) == 64);
static_assert(offsetof(PF_EffectWorld, reserved_long1) == 72);
static_assert(offsetof(PF_EffectWorld, reserved_long4) == 80);
static_assert(offsetof(PF_EffectWorld, pix_aspect_ratio) == 88);
static_assert(offsetof(PF_EffectWorld, reserved_long2) == 96);
static_assert(offsetof(PF_EffectWorld, origin_x) == 104);
static_assert(offsetof(PF_EffectWorld, origin_y) == 108);
static_assert(offsetof(PF_EffectWorld, reserved_long3) == 112);
static_assert(offsetof(PF_EffectWorld, dephault) == 116);
