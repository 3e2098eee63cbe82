// Drawing into a custom control through the host's drawing suites.
#pragma once

#include <span>

#include "plugin/controls/control_event.h"
#include "plugin/controls/reported_suite.h"

namespace brisel {

struct Rect {
  float left;
  float top;
  float width;
  float height;
};

struct BoxColors {
  DRAWBOT_ColorRGBA fill;
  DRAWBOT_ColorRGBA stroke;
};

/// Pixels of 24 bits: blue, green, red; top row first, rows padded to a multiple of 4 bytes.
struct Picture {
  std::span<const std::uint8_t> pixels;
  int width;
  int height;
};

/// Lives within one draw event. The first error of the host ends the drawing and stands in `error`,
/// which must outlive the canvas; every object and suite goes back to the host whatever happens.
class Canvas {
 public:
  Canvas(const ControlEvent& event, PF_Err& error);

  /// Whether the host gave something to draw on.
  bool drawable() const { return error_ == PF_Err_NONE && surface_ != nullptr; }

  /// Fills and outlines a box with a pen of width 1, whose outer half takes one pixel of the size.
  void drawBox(const Rect& box, const BoxColors& colors);

  /// The picture's top left corner comes to lie at x, y. Opacity from 0 to 1.
  void drawPicture(const Picture& picture, int x, int y, float opacity);

 private:
  template <class Object>
  class Owned;

  bool succeeded(SPErr result);

  PF_Err& error_;
  ReportedSuite<DRAWBOT_DrawbotSuite1> draw_;
  ReportedSuite<DRAWBOT_SupplierSuite1> supply_;
  ReportedSuite<DRAWBOT_SurfaceSuite1> surfaces_;
  ReportedSuite<DRAWBOT_PathSuite1> paths_;
  ReportedSuite<PF_EffectCustomUISuite1> customUI_;
  DRAWBOT_SupplierRef supplier_ = nullptr;
  DRAWBOT_SurfaceRef surface_ = nullptr;
};

}  // namespace brisel
