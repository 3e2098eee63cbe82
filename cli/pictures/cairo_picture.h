// Pictures drawn with cairo.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>

#include "cli/pictures/frame.h"

namespace cli {

struct CairoDeleter {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using Cairo = std::unique_ptr<cairo_t, CairoDeleter>;

// Size in pixels. Throws WorkError when there is no memory.
CairoSurface newSurface(cairo_format_t format, int width, int height);

// Throws WorkError when something went wrong since the context was made: every call on a context
// that failed does nothing, so asking once is enough.
void checkDrawn(cairo_t* cairo);

// Of a surface without alpha.
Frame frameFromSurface(cairo_surface_t* surface);

// Levels are 0..1.
void setGray(cairo_t* cairo, double gray);
void drawText(cairo_t* cairo, const std::string& text, double x, double baseline, double size,
              double gray);

}  // namespace cli
