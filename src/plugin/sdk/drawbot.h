// The host's effect interface: the drawing suites of the custom controls. Drawing is allowed
// during the draw event only. Every New... needs its ReleaseObject; an image may go on reading the
// buffer it was made from until it is released.
#pragma once

#include "plugin/sdk/base_types.h"

using DRAWBOT_DrawRef = struct DRAWBOT_Draw*;
using DRAWBOT_SupplierRef = struct DRAWBOT_Supplier*;
using DRAWBOT_SurfaceRef = struct DRAWBOT_Surface*;
using DRAWBOT_PenRef = struct DRAWBOT_Pen*;
using DRAWBOT_BrushRef = struct DRAWBOT_Brush*;
using DRAWBOT_ImageRef = struct DRAWBOT_Image*;
using DRAWBOT_PathRef = struct DRAWBOT_Path*;
using DRAWBOT_ObjectRef = void*;

inline constexpr char kDRAWBOT_DrawSuite[] = "DRAWBOT Draw Suite";
inline constexpr char kDRAWBOT_SupplierSuite[] = "DRAWBOT Supplier Suite";
inline constexpr char kDRAWBOT_SurfaceSuite[] = "DRAWBOT Surface Suite";
inline constexpr char kDRAWBOT_PathSuite[] = "DRAWBOT Path Suite";
inline constexpr std::int32_t kDRAWBOT_DrawSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_SupplierSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_SurfaceSuite_Version1 = 1;
inline constexpr std::int32_t kDRAWBOT_PathSuite_Version1 = 1;

struct DRAWBOT_PointF32 {
  float x;
  float y;
};
static_assert(sizeof(DRAWBOT_PointF32) == 8 && offsetof(DRAWBOT_PointF32, y) == 4);

struct DRAWBOT_RectF32 {
  float left;
  float top;
  float width;
  float height;
};
static_assert(sizeof(DRAWBOT_RectF32) == 16 && offsetof(DRAWBOT_RectF32, top) == 4);
static_assert(offsetof(DRAWBOT_RectF32, width) == 8 && offsetof(DRAWBOT_RectF32, height) == 12);

struct DRAWBOT_Rect32 {
  std::int32_t left;
  std::int32_t top;
  std::int32_t width;
  std::int32_t height;
};
static_assert(sizeof(DRAWBOT_Rect32) == 16 && offsetof(DRAWBOT_Rect32, top) == 4);
static_assert(offsetof(DRAWBOT_Rect32, width) == 8 && offsetof(DRAWBOT_Rect32, height) == 12);

// Channels from 0 to 1.
struct DRAWBOT_ColorRGBA {
  float red;
  float green;
  float blue;
  float alpha;
};
static_assert(sizeof(DRAWBOT_ColorRGBA) == 16 && offsetof(DRAWBOT_ColorRGBA, green) == 4);
static_assert(offsetof(DRAWBOT_ColorRGBA, blue) == 8 && offsetof(DRAWBOT_ColorRGBA, alpha) == 12);

using DRAWBOT_PixelLayout = int;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_24RGB = 0;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_24BGR = 1;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_32RGB = 2;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_32BGR = 3;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_32ARGB_Straight = 4;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_32ARGB_Premul = 5;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_32BGRA_Straight = 6;
inline constexpr DRAWBOT_PixelLayout kDRAWBOT_PixelLayout_32BGRA_Premul = 7;

using DRAWBOT_FillType = int;
inline constexpr DRAWBOT_FillType kDRAWBOT_FillType_EvenOdd = 0;
inline constexpr DRAWBOT_FillType kDRAWBOT_FillType_Winding = 1;

struct DRAWBOT_DrawbotSuite1 {
  SPErr (*GetSupplier)(DRAWBOT_DrawRef draw, DRAWBOT_SupplierRef* supplier);
  SPErr (*GetSurface)(DRAWBOT_DrawRef draw, DRAWBOT_SurfaceRef* surface);
};
static_assert(sizeof(DRAWBOT_DrawbotSuite1) == 2 * 8);
static_assert(offsetof(DRAWBOT_DrawbotSuite1, GetSurface) == 1 * 8);

struct DRAWBOT_SupplierSuite1 {
  SPErr (*NewPen)(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color, float size,
                  DRAWBOT_PenRef* pen);
  SPErr (*NewBrush)(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* color,
                    DRAWBOT_BrushRef* brush);
  void* SupportsText;
  void* GetDefaultFontSize;
  void* NewDefaultFont;
  SPErr (*NewImageFromBuffer)(DRAWBOT_SupplierRef supplier, int width, int height, int row_bytes,
                              DRAWBOT_PixelLayout layout, const void* pixels,
                              DRAWBOT_ImageRef* image);
  SPErr (*NewPath)(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef* path);
  void* pixel_layout_queries[4];
  SPErr (*RetainObject)(DRAWBOT_ObjectRef object);
  SPErr (*ReleaseObject)(DRAWBOT_ObjectRef object);
};
static_assert(sizeof(DRAWBOT_SupplierSuite1) == 13 * 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewBrush) == 1 * 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewImageFromBuffer) == 5 * 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, NewPath) == 6 * 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, RetainObject) == 11 * 8);
static_assert(offsetof(DRAWBOT_SupplierSuite1, ReleaseObject) == 12 * 8);

struct DRAWBOT_SurfaceSuite1 {
  SPErr (*PushStateStack)(DRAWBOT_SurfaceRef surface);
  SPErr (*PopStateStack)(DRAWBOT_SurfaceRef surface);
  SPErr (*PaintRect)(DRAWBOT_SurfaceRef surface, const DRAWBOT_ColorRGBA* color,
                     const DRAWBOT_RectF32* rect);
  SPErr (*FillPath)(DRAWBOT_SurfaceRef surface, DRAWBOT_BrushRef brush, DRAWBOT_PathRef path,
                    DRAWBOT_FillType fill_type);
  SPErr (*StrokePath)(DRAWBOT_SurfaceRef surface, DRAWBOT_PenRef pen, DRAWBOT_PathRef path);
  void* Clip;
  void* GetClipBounds;
  void* IsWithinClipBounds;
  void* Transform;
  void* DrawString;
  SPErr (*DrawImage)(DRAWBOT_SurfaceRef surface, DRAWBOT_ImageRef image,
                     const DRAWBOT_PointF32* origin, float alpha);
  void* policies[4];
  SPErr (*Flush)(DRAWBOT_SurfaceRef surface);
};
static_assert(sizeof(DRAWBOT_SurfaceSuite1) == 16 * 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite1, PaintRect) == 2 * 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite1, FillPath) == 3 * 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite1, StrokePath) == 4 * 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite1, DrawImage) == 10 * 8);
static_assert(offsetof(DRAWBOT_SurfaceSuite1, Flush) == 15 * 8);

struct DRAWBOT_PathSuite1 {
  SPErr (*MoveTo)(DRAWBOT_PathRef path, float x, float y);
  SPErr (*LineTo)(DRAWBOT_PathRef path, float x, float y);
  SPErr (*BezierTo)(DRAWBOT_PathRef path, const DRAWBOT_PointF32* control1,
                    const DRAWBOT_PointF32* control2, const DRAWBOT_PointF32* end);
  SPErr (*AddRect)(DRAWBOT_PathRef path, const DRAWBOT_RectF32* rect);
  SPErr (*AddArc)(DRAWBOT_PathRef path, const DRAWBOT_PointF32* center, float radius,
                  float start_angle, float sweep);
  SPErr (*Close)(DRAWBOT_PathRef path);
};
static_assert(sizeof(DRAWBOT_PathSuite1) == 6 * 8);
static_assert(offsetof(DRAWBOT_PathSuite1, AddRect) == 3 * 8);
static_assert(offsetof(DRAWBOT_PathSuite1, Close) == 5 * 8);
