// hostkit: where a module's drawing ends up.
#pragma once

#include <cstdint>
#include <vector>

#include "plugin/sdk/drawbot.h"

namespace hostkit {

// Red, green, blue; top row first, no padding.
struct PaintedImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;

  bool operator==(const PaintedImage&) const = default;
};

// Coordinates are pixels of the pane in which the controls lie.
class Painter {
 public:
  virtual ~Painter() = default;
  virtual void fillRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color) = 0;
  virtual void strokeRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color,
                          float width) = 0;
  virtual void drawImage(const PaintedImage& image, const DRAWBOT_PointF32& origin,
                         float alpha) = 0;
};

}  // namespace hostkit
