// The host's effect interface: suites, tables of function pointers acquired by name and version.
// A non-zero result of AcquireSuite means that the host does not offer the suite.
#pragma once

#include "plugin/sdk/base_types.h"
#include "plugin/sdk/drawbot.h"
#include "plugin/sdk/events.h"
#include "plugin/sdk/params.h"

struct SPBasicSuite {
  SPErr (*AcquireSuite)(const char* name, std::int32_t version, const void** suite);
  SPErr (*ReleaseSuite)(const char* name, std::int32_t version);
  void* IsEqual;
  SPErr (*AllocateBlock)(std::size_t size, void** block);
  SPErr (*FreeBlock)(void* block);
  SPErr (*ReallocateBlock)(void* block, std::size_t new_size, void** new_block);
  void* Undefined;
};
static_assert(sizeof(SPBasicSuite) == 7 * 8 && offsetof(SPBasicSuite, ReleaseSuite) == 1 * 8);
static_assert(offsetof(SPBasicSuite, AllocateBlock) == 3 * 8);
static_assert(offsetof(SPBasicSuite, Undefined) == 6 * 8);

inline constexpr char kPFParamUtilsSuite[] = "PF Param Utils Suite";
inline constexpr std::int32_t kPFParamUtilsSuiteVersion2 = 2;

struct PF_ParamUtilsSuite2 {
  PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex index, const PF_ParamDef* def);
  void* reserved[9];
};
static_assert(sizeof(PF_ParamUtilsSuite2) == 10 * 8);

inline constexpr char kPFPathQuerySuite[] = "PF Path Query Suite";
inline constexpr std::int32_t kPFPathQuerySuiteVersion1 = 1;

struct PF_PathQuerySuite1 {
  PF_Err (*PF_NumPaths)(PF_ProgPtr effect_ref, A_long* count);
  PF_Err (*PF_PathInfo)(PF_ProgPtr effect_ref, A_long index, PF_PathID* id);
  PF_Err (*PF_CheckoutPath)(PF_ProgPtr effect_ref, PF_PathID id, A_long what_time, A_long time_step,
                            A_u_long time_scale, PF_PathOutlinePtr* path);
  PF_Err (*PF_CheckinPath)(PF_ProgPtr effect_ref, PF_PathID id, PF_Boolean changed,
                           PF_PathOutlinePtr path);
};
static_assert(sizeof(PF_PathQuerySuite1) == 4 * 8);
static_assert(offsetof(PF_PathQuerySuite1, PF_CheckoutPath) == 2 * 8);
static_assert(offsetof(PF_PathQuerySuite1, PF_CheckinPath) == 3 * 8);

// In the layer's coordinate space. Tangents are points, not offsets from the vertex.
struct PF_PathVertex {
  double x;
  double y;
  double tan_in_x;
  double tan_in_y;
  double tan_out_x;
  double tan_out_y;
};
static_assert(sizeof(PF_PathVertex) == 48 && offsetof(PF_PathVertex, y) == 8);
static_assert(offsetof(PF_PathVertex, tan_in_x) == 16 && offsetof(PF_PathVertex, tan_in_y) == 24);
static_assert(offsetof(PF_PathVertex, tan_out_x) == 32 && offsetof(PF_PathVertex, tan_out_y) == 40);

inline constexpr char kPFPathDataSuite[] = "PF Path Data Suite";
inline constexpr std::int32_t kPFPathDataSuiteVersion1 = 1;

struct PF_PathDataSuite1 {
  PF_Err (*PF_PathIsOpen)(PF_ProgPtr effect_ref, PF_PathOutlinePtr path, PF_Boolean* open);
  PF_Err (*PF_PathNumSegments)(PF_ProgPtr effect_ref, PF_PathOutlinePtr path, A_long* count);
  PF_Err (*PF_PathVertexInfo)(PF_ProgPtr effect_ref, PF_PathOutlinePtr path, A_long index,
                              PF_PathVertex* vertex);
  void* segment_lengths[5];
  PF_Err (*PF_PathIsInverted)(PF_ProgPtr effect_ref, PF_PathID id, PF_Boolean* inverted);
  void* PF_PathGetMaskMode;
  void* PF_PathGetName;
};
static_assert(sizeof(PF_PathDataSuite1) == 11 * 8);
static_assert(offsetof(PF_PathDataSuite1, PF_PathVertexInfo) == 2 * 8);
static_assert(offsetof(PF_PathDataSuite1, PF_PathIsInverted) == 8 * 8);

inline constexpr char kPFEffectCustomUISuite[] = "PF Effect Custom UI Suite";
inline constexpr std::int32_t kPFEffectCustomUISuiteVersion1 = 1;

struct PF_EffectCustomUISuite1 {
  PF_Err (*PF_GetDrawingReference)(PF_ContextH context, DRAWBOT_DrawRef* draw);
};
static_assert(sizeof(PF_EffectCustomUISuite1) == 1 * 8);

inline constexpr char kPFAppSuite[] = "PF AE App Suite";
inline constexpr std::int32_t kPFAppSuiteVersion6 = 6;

struct PFAppSuite6 {
  void* reserved[9];
  PF_Err (*PF_InvalidateRect)(PF_ContextH context, const PF_Rect* rect);  // null: the whole pane
  void* reserved1[5];
};
static_assert(sizeof(PFAppSuite6) == 15 * 8 && offsetof(PFAppSuite6, PF_InvalidateRect) == 9 * 8);
