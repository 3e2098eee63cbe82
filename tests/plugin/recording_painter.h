// A painter that keeps what it is told to paint, and checks of that.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "hostkit/painter.h"

namespace tests {

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

// A box is filled, and then outlined with a pen of width 1.
inline void expectBox(const Drawing& fill, const Drawing& stroke, const DRAWBOT_RectF32& rect,
                      const DRAWBOT_ColorRGBA& fillColor, const DRAWBOT_ColorRGBA& strokeColor) {
  const auto same = [](const auto& a, const auto& b) { return std::memcmp(&a, &b, sizeof a) == 0; };
  EXPECT_EQ(fill.kind, Drawing::kFill);
  EXPECT_EQ(stroke.kind, Drawing::kStroke);
  EXPECT_EQ(stroke.penWidth, 1.0f);
  EXPECT_TRUE(same(fill.rect, rect) && same(stroke.rect, rect)) << rect.left << ' ' << rect.top;
  EXPECT_TRUE(same(fill.color, fillColor) && same(stroke.color, strokeColor)) << rect.left;
}

inline void expectImage(const Drawing& image, const DRAWBOT_RectF32& rect, float alpha) {
  EXPECT_EQ(image.kind, Drawing::kImage);
  EXPECT_EQ(image.rect.left, rect.left);
  EXPECT_EQ(image.rect.top, rect.top);
  EXPECT_EQ(image.rect.width, rect.width);
  EXPECT_EQ(image.rect.height, rect.height);
  EXPECT_EQ(image.color.alpha, alpha);
}

}  // namespace tests
