// Paints what the module draws into its controls.
#pragma once

#include <cairo.h>

#include "hostkit/painter.h"

namespace cli {

class CairoPainter : public hostkit::Painter {
 public:
  // The context's coordinates are the pane's.
  explicit CairoPainter(cairo_t* cairo) : cairo_(cairo) {}

  void fillRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color) override;
  void strokeRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color,
                  float width) override;
  void drawImage(const hostkit::PaintedImage& image, const DRAWBOT_PointF32& origin,
                 float alpha) override;

 private:
  void setColor(const DRAWBOT_ColorRGBA& color);

  cairo_t* cairo_;
};

}  // namespace cli
