// The host's effect interface: the records that every command carries, and the host's callbacks.
// Callbacks may be called on the host's thread only, while a command runs. Slots this project has
// no use for are kept as opaque pointers.
#pragma once

#include "plugin/sdk/base_types.h"
#include "plugin/sdk/params.h"
#include "plugin/sdk/pixel.h"

struct SPBasicSuite;

struct PF_InteractCallbacks {
  PF_Err (*checkout_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time,
                           A_long time_step, A_u_long time_scale, PF_ParamDef* param);
  PF_Err (*checkin_param)(PF_ProgPtr effect_ref, PF_ParamDef* param);
  PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDef* def);  // -1: append
  PF_Err (*abort)(PF_ProgPtr effect_ref);
  PF_Err (*progress)(PF_ProgPtr effect_ref, A_long current, A_long total);
  PF_Err (*register_ui)(PF_ProgPtr effect_ref, PF_CustomUIInfo* info);
  void* audio[3];
  void* reserved[13];
};
static_assert(sizeof(PF_InteractCallbacks) == 176);
static_assert(offsetof(PF_InteractCallbacks, checkin_param) == 8);
static_assert(offsetof(PF_InteractCallbacks, add_param) == 16);
static_assert(offsetof(PF_InteractCallbacks, abort) == 24);
static_assert(offsetof(PF_InteractCallbacks, progress) == 32);
static_assert(offsetof(PF_InteractCallbacks, register_ui) == 40);
static_assert(offsetof(PF_InteractCallbacks, audio) == 48);
static_assert(offsetof(PF_InteractCallbacks, reserved) == 72);

struct PF_ANSICallbacks {
  double (*atan)(double);
  double (*atan2)(double y, double x);
  double (*ceil)(double);
  double (*cos)(double);
  double (*exp)(double);
  double (*fabs)(double);
  double (*floor)(double);
  double (*fmod)(double x, double y);
  double (*hypot)(double x, double y);
  double (*log)(double);
  double (*log10)(double);
  double (*pow)(double x, double y);
  double (*sin)(double);
  double (*sqrt)(double);
  double (*tan)(double);
  int (*sprintf)(char* to, const char* format, ...);
  char* (*strcpy)(char* to, const char* from);
  double (*asin)(double);
  double (*acos)(double);
  void* reserved;
};
static_assert(sizeof(PF_ANSICallbacks) == 160);
static_assert(offsetof(PF_ANSICallbacks, sprintf) == 120);
static_assert(offsetof(PF_ANSICallbacks, strcpy) == 128);

// The handle callbacks take no effect_ref.
struct PF_UtilCallbacks {
  void* reserved0[20];
  PF_Handle (*host_new_handle)(A_u_longlong size);  // null when out of memory
  void* (*host_lock_handle)(PF_Handle handle);
  void (*host_unlock_handle)(PF_Handle handle);
  void (*host_dispose_handle)(PF_Handle handle);
  void* get_callback_addr;
  void* app;
  PF_ANSICallbacks ansi;
  void* colorCB[8];
  PF_Err (*get_platform_data)(PF_ProgPtr effect_ref, A_long which, void* data);
  A_u_longlong (*host_get_handle_size)(PF_Handle handle);
  void* iterate_origin_non_clip_src;
  void* iterate_generic;
  PF_Err (*host_resize_handle)(A_u_longlong new_size, PF_Handle* handle);
  void* reserved1[9];
  A_long reserved2;
};
static_assert(sizeof(PF_UtilCallbacks) == 552);
static_assert(offsetof(PF_UtilCallbacks, host_new_handle) == 160);
static_assert(offsetof(PF_UtilCallbacks, host_lock_handle) == 168);
static_assert(offsetof(PF_UtilCallbacks, host_unlock_handle) == 176);
static_assert(offsetof(PF_UtilCallbacks, host_dispose_handle) == 184);
static_assert(offsetof(PF_UtilCallbacks, get_callback_addr) == 192);
static_assert(offsetof(PF_UtilCallbacks, app) == 200);
static_assert(offsetof(PF_UtilCallbacks, ansi) == 208);
static_assert(offsetof(PF_UtilCallbacks, colorCB) == 368);
static_assert(offsetof(PF_UtilCallbacks, get_platform_data) == 432);
static_assert(offsetof(PF_UtilCallbacks, host_get_handle_size) == 440);
static_assert(offsetof(PF_UtilCallbacks, iterate_origin_non_clip_src) == 448);
static_assert(offsetof(PF_UtilCallbacks, iterate_generic) == 456);
static_assert(offsetof(PF_UtilCallbacks, host_resize_handle) == 464);
static_assert(offsetof(PF_UtilCallbacks, reserved1) == 472);
static_assert(offsetof(PF_UtilCallbacks, reserved2) == 544);

struct PF_SoundWorld {
  double rateF;
  A_short num_channels;
  A_short format;
  A_short sample_size;
  A_long num_samples;
  void* dataP;
};
static_assert(sizeof(PF_SoundWorld) == 32 && offsetof(PF_SoundWorld, num_channels) == 8);
static_assert(offsetof(PF_SoundWorld, format) == 10);
static_assert(offsetof(PF_SoundWorld, sample_size) == 12);
static_assert(offsetof(PF_SoundWorld, num_samples) == 16 && offsetof(PF_SoundWorld, dataP) == 24);

struct PF_SpecVersion {
  A_short major;
  A_short minor;
};
static_assert(sizeof(PF_SpecVersion) == 4 && offsetof(PF_SpecVersion, minor) == 2);

struct PF_InData {
  PF_InteractCallbacks inter;
  PF_UtilCallbacks* utils;
  PF_ProgPtr effect_ref;  // may differ from call to call
  PF_Quality quality;
  PF_SpecVersion version;
  A_long serial_num;
  A_long appl_id;
  A_long num_params;
  A_long reserved;
  A_long what_cpu;
  A_long what_fpu;
  A_long current_time;  // in units of 1 / time_scale seconds, as the next three
  A_long time_step;
  A_long total_time;
  A_long local_time_step;
  A_u_long time_scale;
  A_long field;
  PF_Fixed shutter_angle;
  A_long width;  // of the layer at full resolution, pixels
  A_long height;
  PF_LRect extent_hint;
  A_long output_origin_x;
  A_long output_origin_y;
  PF_RationalScale downsample_x;
  PF_RationalScale downsample_y;
  PF_RationalScale pixel_aspect_ratio;
  A_long in_flags;
  PF_Handle global_data;
  PF_Handle sequence_data;
  PF_Handle frame_data;
  A_long start_sampL;
  A_long dur_sampL;
  A_long total_sampL;
  PF_SoundWorld src_snd;
  SPBasicSuite* pica_basicP;
  A_long pre_effect_source_origin_x;
  A_long pre_effect_source_origin_y;
  PF_Fixed shutter_phase;
};
static_assert(sizeof(PF_InData) == 408);
static_assert(offsetof(PF_InData, inter) == 0 && offsetof(PF_InData, utils) == 176);
static_assert(offsetof(PF_InData, effect_ref) == 184 && offsetof(PF_InData, quality) == 192);
static_assert(offsetof(PF_InData, version) == 196 && offsetof(PF_InData, serial_num) == 200);
static_assert(offsetof(PF_InData, appl_id) == 204 && offsetof(PF_InData, num_params) == 208);
static_assert(offsetof(PF_InData, reserved) == 212 && offsetof(PF_InData, what_cpu) == 216);
static_assert(offsetof(PF_InData, what_fpu) == 220 && offsetof(PF_InData, current_time) == 224);
static_assert(offsetof(PF_InData, time_step) == 228 && offsetof(PF_InData, total_time) == 232);
static_assert(offsetof(PF_InData, local_time_step) == 236);
static_assert(offsetof(PF_InData, time_scale) == 240 && offsetof(PF_InData, field) == 244);
static_assert(offsetof(PF_InData, shutter_angle) == 248 && offsetof(PF_InData, width) == 252);
static_assert(offsetof(PF_InData, height) == 256 && offsetof(PF_InData, extent_hint) == 260);
static_assert(offsetof(PF_InData, output_origin_x) == 276);
static_assert(offsetof(PF_InData, output_origin_y) == 280);
static_assert(offsetof(PF_InData, downsample_x) == 284);
static_assert(offsetof(PF_InData, downsample_y) == 292);
static_assert(offsetof(PF_InData, pixel_aspect_ratio) == 300);
static_assert(offsetof(PF_InData, in_flags) == 308 && offsetof(PF_InData, global_data) == 312);
static_assert(offsetof(PF_InData, sequence_data) == 320);
static_assert(offsetof(PF_InData, frame_data) == 328 && offsetof(PF_InData, start_sampL) == 336);
static_assert(offsetof(PF_InData, dur_sampL) == 340 && offsetof(PF_InData, total_sampL) == 344);
static_assert(offsetof(PF_InData, src_snd) == 352 && offsetof(PF_InData, pica_basicP) == 384);
static_assert(offsetof(PF_InData, pre_effect_source_origin_x) == 392);
static_assert(offsetof(PF_InData, pre_effect_source_origin_y) == 396);
static_assert(offsetof(PF_InData, shutter_phase) == 400);

// Before every command the host copies in->sequence_data to out->sequence_data; afterwards the
// value in out->sequence_data is the instance's handle.
struct PF_OutData {
  A_u_long my_version;
  A_char name[32];
  PF_Handle global_data;
  A_long num_params;
  PF_Handle sequence_data;
  A_long flat_sdata_size;
  PF_Handle frame_data;
  A_long width;
  A_long height;
  PF_Point origin;
  PF_OutFlags out_flags;
  A_char return_msg[256];
  A_long start_sampL;
  A_long dur_sampL;
  PF_SoundWorld dest_snd;
  PF_OutFlags out_flags2;
};
static_assert(sizeof(PF_OutData) == 408);
static_assert(offsetof(PF_OutData, my_version) == 0 && offsetof(PF_OutData, name) == 4);
static_assert(offsetof(PF_OutData, global_data) == 40 && offsetof(PF_OutData, num_params) == 48);
static_assert(offsetof(PF_OutData, sequence_data) == 56);
static_assert(offsetof(PF_OutData, flat_sdata_size) == 64);
static_assert(offsetof(PF_OutData, frame_data) == 72 && offsetof(PF_OutData, width) == 80);
static_assert(offsetof(PF_OutData, height) == 84 && offsetof(PF_OutData, origin) == 88);
static_assert(offsetof(PF_OutData, out_flags) == 96 && offsetof(PF_OutData, return_msg) == 100);
static_assert(offsetof(PF_OutData, start_sampL) == 356 && offsetof(PF_OutData, dur_sampL) == 360);
static_assert(offsetof(PF_OutData, dest_snd) == 368 && offsetof(PF_OutData, out_flags2) == 400);
