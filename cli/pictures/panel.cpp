#include "cli/pictures/panel.h"

#include <algorithm>
#include <limits>

#include "cli/pictures/cairo_painter.h"
#include "cli/pictures/panel_value.h"

namespace cli {
namespace {

using hostkit::Parameter;

// Pixels.
constexpr int kMargin = 20;
constexpr int kTitleBarHeight = 34;
constexpr int kLineHeight = hostkit::kTitleHeight;
constexpr int kIndent = 18;
constexpr int kTwirlyWidth = 16;
constexpr int kValueLeft = 330;
constexpr int kControlGap = 8;  // below a control of the module
constexpr double kTitleTextSize = 13;

constexpr double kGround = 0.137;
constexpr double kTitleBarGray = 0.19;
constexpr double kGroupGray = 0.16;
constexpr double kSeparatorGray = 0.105;
constexpr double kNameGray = 0.78;
constexpr double kTitleTextGray = 0.93;
constexpr double kDisabledOpacity = 0.36;

bool contains(const PF_Rect& rect, PF_Point point) {
  return point.h >= rect.left && point.h < rect.right && point.v >= rect.top &&
         point.v < rect.bottom;
}

void fillBand(cairo_t* cairo, double top, double height, double width, double gray) {
  setGray(cairo, gray);
  cairo_rectangle(cairo, 0, top, width, height);
  cairo_fill(cairo);
}

// The triangle of a group, pointing down when the group is open.
void drawTwirly(cairo_t* cairo, double x, double middle, bool open) {
  setGray(cairo, kNameGray);
  cairo_save(cairo);
  cairo_translate(cairo, x + 4, middle);
  if (open) cairo_rotate(cairo, 1.5707963267948966);
  cairo_move_to(cairo, -3, -4.5);
  cairo_line_to(cairo, 4, 0);
  cairo_line_to(cairo, -3, 4.5);
  cairo_close_path(cairo);
  cairo_fill(cairo);
  cairo_restore(cairo);
}

}  // namespace

Panel::Panel(hostkit::Session& session, std::string title, int width)
    : session_(session), title_(std::move(title)), width_(width) {}

Frame Panel::paint() {
  session_.updateParamsUI();
  layOut();
  const CairoSurface surface = newSurface(CAIRO_FORMAT_RGB24, width_, height_);
  const Cairo cairo(cairo_create(surface.get()));
  setGray(cairo.get(), kGround);
  cairo_paint(cairo.get());
  cairo_select_font_face(cairo.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                         CAIRO_FONT_WEIGHT_NORMAL);
  fillBand(cairo.get(), 0, kTitleBarHeight, width_, kTitleBarGray);
  drawText(cairo.get(), title_, kMargin, 0.64 * kTitleBarHeight, kTitleTextSize, kTitleTextGray);
  for (const Line& line : lines_) paintLine(cairo.get(), line);

  CairoPainter painter(cairo.get());
  for (const Line& line : lines_) {
    if (!line.control) continue;
    const PF_Rect& rect = *line.control;
    cairo_save(cairo.get());
    cairo_rectangle(cairo.get(), rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top);
    cairo_clip(cairo.get());
    session_.draw(line.parameter->index, rect, &painter);
    cairo_restore(cairo.get());
  }
  checkDrawn(cairo.get());
  return frameFromSurface(surface.get());
}

bool Panel::click(PF_Point point) {
  const Line* line = controlAt(point);
  if (line != nullptr) session_.click(line->parameter->index, *line->control, point);
  return line != nullptr;
}

bool Panel::hover(PF_Point point) {
  const Line* line = controlAt(point);
  if (line != nullptr) session_.hover(line->parameter->index, *line->control, point);
  return line != nullptr;
}

void Panel::layOut() {
  lines_.clear();
  height_ = kTitleBarHeight;
  int closedAtDepth = std::numeric_limits<int>::max();  // what lies deeper is not shown
  for (const Parameter& parameter : session_.parameters().list()) {
    if (parameter.index == 0 || parameter.type() == PF_Param_GROUP_END) continue;
    if (parameter.groupDepth > closedAtDepth) continue;
    closedAtDepth = std::numeric_limits<int>::max();
    const PF_ParamDef& shown = value(parameter);
    Line line{&parameter, height_, std::nullopt};
    height_ += kLineHeight;
    if (parameter.type() == PF_Param_GROUP_START &&
        (shown.flags & PF_ParamFlag_COLLAPSE_TWIRLY) != 0) {
      closedAtDepth = parameter.groupDepth;
    }
    if ((shown.ui_flags & PF_PUI_CONTROL) != 0) {
      const int width = std::min<int>(shown.ui_width, width_ - 2 * kMargin);
      line.control = {kMargin, height_, kMargin + width, height_ + shown.ui_height};
      height_ += shown.ui_height + kControlGap;
    }
    lines_.push_back(line);
  }
  height_ += kControlGap;
}

void Panel::paintLine(cairo_t* cairo, const Line& line) const {
  const Parameter& parameter = *line.parameter;
  const PF_ParamDef& shown = value(parameter);
  const bool isGroup = parameter.type() == PF_Param_GROUP_START;
  const double middle = line.top + kLineHeight / 2.0;
  if (isGroup) fillBand(cairo, line.top, kLineHeight, width_, kGroupGray);
  fillBand(cairo, line.top, 1, width_, kSeparatorGray);

  cairo_push_group(cairo);
  const double left = kMargin + parameter.groupDepth * kIndent;
  if (isGroup) drawTwirly(cairo, left, middle, (shown.flags & PF_ParamFlag_COLLAPSE_TWIRLY) == 0);
  drawText(cairo, shown.name, left + kTwirlyWidth, middle + 0.36 * kPanelTextSize, kPanelTextSize,
           isGroup ? kTitleTextGray : kNameGray);
  drawPanelValue(cairo, parameter, shown, kValueLeft, middle);
  cairo_pop_group_to_source(cairo);
  cairo_paint_with_alpha(cairo, (shown.ui_flags & PF_PUI_DISABLED) != 0 ? kDisabledOpacity : 1);
}

const Panel::Line* Panel::controlAt(PF_Point point) const {
  const auto found = std::ranges::find_if(
      lines_, [&](const Line& line) { return line.control && contains(*line.control, point); });
  return found == lines_.end() ? nullptr : &*found;
}

const PF_ParamDef& Panel::value(const Parameter& parameter) const {
  return std::as_const(session_).parameters().value(parameter.index);
}

}  // namespace cli
