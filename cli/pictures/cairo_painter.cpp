#include "cli/pictures/cairo_painter.h"

#include <cstring>

#include "cli/pictures/cairo_picture.h"

namespace cli {

void CairoPainter::fillRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color) {
  setColor(color);
  cairo_rectangle(cairo_, rect.left, rect.top, rect.width, rect.height);
  cairo_fill(cairo_);
}

// Lines run through the middles of pixels.
void CairoPainter::strokeRect(const DRAWBOT_RectF32& rect, const DRAWBOT_ColorRGBA& color,
                              float width) {
  setColor(color);
  cairo_set_line_width(cairo_, width);
  cairo_rectangle(cairo_, rect.left + 0.5, rect.top + 0.5, rect.width, rect.height);
  cairo_stroke(cairo_);
}

void CairoPainter::drawImage(const hostkit::PaintedImage& image, const DRAWBOT_PointF32& origin,
                             float alpha) {
  const CairoSurface surface = newSurface(CAIRO_FORMAT_RGB24, image.width, image.height);
  cairo_surface_flush(surface.get());
  unsigned char* rows = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  const std::uint8_t* pixel = image.pixels.data();
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x, pixel += 3) {
      const std::uint32_t packed =
          std::uint32_t{pixel[0]} << 16 | std::uint32_t{pixel[1]} << 8 | pixel[2];
      std::memcpy(rows + std::ptrdiff_t{y} * stride + 4 * x, &packed, sizeof packed);
    }
  }
  cairo_surface_mark_dirty(surface.get());
  cairo_set_source_surface(cairo_, surface.get(), origin.x, origin.y);
  cairo_paint_with_alpha(cairo_, alpha);
}

void CairoPainter::setColor(const DRAWBOT_ColorRGBA& color) {
  cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha);
}

}  // namespace cli
