#include "cli/pictures/cairo_picture.h"

#include <cstring>

#include "cli/support/errors.h"

namespace cli {
namespace {

void check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) {
    throw WorkError(std::string("cannot draw the picture: ") + cairo_status_to_string(status));
  }
}

}  // namespace

CairoSurface newSurface(cairo_format_t format, int width, int height) {
  CairoSurface surface(cairo_image_surface_create(format, width, height));
  check(cairo_surface_status(surface.get()));
  return surface;
}

void checkDrawn(cairo_t* cairo) {
  check(cairo_status(cairo));
}

Frame frameFromSurface(cairo_surface_t* surface) {
  cairo_surface_flush(surface);
  Frame frame({cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface)},
              Depth::Bits8);
  const unsigned char* rows = cairo_image_surface_get_data(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  for (int y = 0; y < frame.size.height; ++y) {
    std::uint8_t* to = frame.row(y);
    for (int x = 0; x < frame.size.width; ++x) {
      std::uint32_t packed;
      std::memcpy(&packed, rows + std::ptrdiff_t{y} * stride + 4 * x, sizeof packed);
      for (int c = 0; c < 3; ++c) *to++ = static_cast<std::uint8_t>(packed >> (16 - 8 * c));
      *to++ = 255;
    }
  }
  return frame;
}

void setGray(cairo_t* cairo, double gray) {
  cairo_set_source_rgb(cairo, gray, gray, gray);
}

void drawText(cairo_t* cairo, const std::string& text, double x, double baseline, double size,
              double gray) {
  cairo_set_font_size(cairo, size);
  setGray(cairo, gray);
  cairo_move_to(cairo, x, baseline);
  cairo_show_text(cairo, text.c_str());
}

}  // namespace cli
