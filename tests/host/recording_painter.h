// A painter that keeps what it is told to paint.
#pragma once

#include <vector>

#include "hostkit/painter.h"

namespace hosttest {

struct Drawing {
  enum Kind { kFill, kStroke, kImage };
  Kind kind;
  DRAWBOT_RectF32 rect;     // of an image its origin and size
  DRAWBOT_ColorRGBA color;  // of an image its alpha
  float penWidth;           // of a stroke
  hostkit::PaintedImage image;
};

class RecordingPainter : public hostkit::Painter {
 public:
  void fillRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color) override {
    drawings.push_back({Drawing::kFill, rect, color, 0, {}});
  }
  void strokeRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color,
                  float width) override {
    drawings.push_back({Drawing::kStroke, rect, color, width, {}});
  }
  void drawImage(const hostkit::PaintedImage& image, const DRAWBOT_PointF32& origin,
                 float alpha) override {
    const auto width = static_cast<float>(image.width);
    const auto height = static_cast<float>(image.height);
    drawings.push_back(
        {Drawing::kImage, {origin.x, origin.y, width, height}, {0, 0, 0, alpha}, 0, image});
  }

  std::vector<Drawing> drawings;
};

}  // namespace hosttest
