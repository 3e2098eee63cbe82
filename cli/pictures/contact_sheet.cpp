#include "cli/pictures/contact_sheet.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace cli {
namespace {

// Pixels.
constexpr int kSheetMargin = 20;
constexpr int kGap = 8;
constexpr int kTitleHeight = 34;
constexpr int kCaptionHeight = 20;
constexpr int kCheckerSide = 8;
constexpr double kTitleSize = 16;
constexpr double kCaptionSize = 11;

// Gray levels, 0..1.
constexpr double kSheetGround = 0.085;
constexpr double kCheckerDark = 0.045;
constexpr double kCheckerLight = 0.065;
constexpr double kTitleGray = 0.88;
constexpr double kCaptionGray = 0.52;

std::uint32_t channelAt(const Frame& frame, const std::uint8_t* pixel, int channel) {
  if (frame.depth == Depth::Bits8) return pixel[channel];
  std::uint16_t deep;
  std::memcpy(&deep, pixel + 2 * channel, sizeof deep);
  return deep >> 8;
}

// The frame in cairo's own format: premultiplied, one 32-bit number per pixel.
void fillSurface(cairo_surface_t* surface, const Frame& frame) {
  cairo_surface_flush(surface);
  unsigned char* rows = cairo_image_surface_get_data(surface);
  const int stride = cairo_image_surface_get_stride(surface);
  for (int y = 0; y < frame.size.height; ++y) {
    const std::uint8_t* pixel = frame.row(y);
    for (int x = 0; x < frame.size.width; ++x, pixel += frame.pixelBytes()) {
      const std::uint32_t alpha = channelAt(frame, pixel, 3);
      std::uint32_t packed = alpha << 24;
      for (int c = 0; c < 3; ++c) {
        packed |= (channelAt(frame, pixel, c) * alpha + 127) / 255 << (16 - 8 * c);
      }
      std::memcpy(rows + std::ptrdiff_t{y} * stride + 4 * x, &packed, sizeof packed);
    }
  }
  cairo_surface_mark_dirty(surface);
}

void drawChecker(cairo_t* cairo, int width, int height) {
  setGray(cairo, kCheckerDark);
  cairo_paint(cairo);
  setGray(cairo, kCheckerLight);
  for (int y = 0; y < height; y += kCheckerSide) {
    for (int x = y / kCheckerSide % 2 * kCheckerSide; x < width; x += 2 * kCheckerSide) {
      cairo_rectangle(cairo, x, y, kCheckerSide, kCheckerSide);
    }
  }
  cairo_fill(cairo);
}

}  // namespace

ContactSheet::ContactSheet(int columns, int cellWidth) : columns_(columns), cellWidth_(cellWidth) {}

void ContactSheet::addGroup(const std::string& title) {
  groups_.push_back({title, {}});
}

void ContactSheet::addFrame(const Frame& frame, int number) {
  const CairoSurface full = newSurface(CAIRO_FORMAT_ARGB32, frame.size.width, frame.size.height);
  fillSurface(full.get(), frame);

  const double scale = static_cast<double>(cellWidth_) / frame.size.width;
  const int height = std::max(1, static_cast<int>(std::lround(frame.size.height * scale)));
  CairoSurface small = newSurface(CAIRO_FORMAT_RGB24, cellWidth_, height);
  const Cairo cairo(cairo_create(small.get()));
  drawChecker(cairo.get(), cellWidth_, height);
  cairo_scale(cairo.get(), scale, scale);
  cairo_set_source_surface(cairo.get(), full.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo.get()), CAIRO_FILTER_GOOD);
  cairo_paint(cairo.get());
  checkDrawn(cairo.get());
  groups_.back().cells.push_back({std::move(small), "frame " + std::to_string(number)});
}

int ContactSheet::cellHeight(const Group& group) const {
  return group.cells.empty() ? 0
                             : cairo_image_surface_get_height(group.cells.front().picture.get());
}

int ContactSheet::groupHeight(const Group& group) const {
  const int rows = (static_cast<int>(group.cells.size()) + columns_ - 1) / columns_;
  return kTitleHeight + rows * (cellHeight(group) + kCaptionHeight + kGap);
}

void ContactSheet::drawGroup(cairo_t* cairo, const Group& group, int top) const {
  drawText(cairo, group.title, kSheetMargin, top + 0.6 * kTitleHeight, kTitleSize, kTitleGray);
  const int cellTop = top + kTitleHeight;
  for (std::size_t i = 0; i < group.cells.size(); ++i) {
    const int column = static_cast<int>(i) % columns_;
    const int row = static_cast<int>(i) / columns_;
    const int x = kSheetMargin + column * (cellWidth_ + kGap);
    const int y = cellTop + row * (cellHeight(group) + kCaptionHeight + kGap);
    cairo_set_source_surface(cairo, group.cells[i].picture.get(), x, y);
    cairo_paint(cairo);
    drawText(cairo, group.cells[i].caption, x, y + cellHeight(group) + 0.75 * kCaptionHeight,
             kCaptionSize, kCaptionGray);
  }
}

Frame ContactSheet::picture() const {
  const int width = 2 * kSheetMargin + columns_ * (cellWidth_ + kGap) - kGap;
  int height = 2 * kSheetMargin;
  for (const Group& group : groups_) height += groupHeight(group);

  const CairoSurface sheet = newSurface(CAIRO_FORMAT_RGB24, width, height);
  const Cairo cairo(cairo_create(sheet.get()));
  setGray(cairo.get(), kSheetGround);
  cairo_paint(cairo.get());
  cairo_select_font_face(cairo.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                         CAIRO_FONT_WEIGHT_NORMAL);
  int top = kSheetMargin;
  for (const Group& group : groups_) {
    drawGroup(cairo.get(), group, top);
    top += groupHeight(group);
  }
  checkDrawn(cairo.get());
  return frameFromSurface(sheet.get());
}

}  // namespace cli
