#include "cli/pictures/panel_value.h"

#include <algorithm>
#include <cstdio>
#include <numbers>

#include "cli/pictures/cairo_picture.h"

namespace cli {
namespace {

// Pixels.
constexpr double kSymbolLeft = 110;  // of a dial or track, from the value's left
constexpr double kTrackLength = 240;
constexpr double kDialRadius = 7.5;
constexpr double kBoxWidth = 230;
constexpr double kBoxHeight = 18;
constexpr double kSwatchWidth = 46;
constexpr double kSwatchHeight = 14;
constexpr double kCheckSide = 13;
constexpr double kCorner = 2.5;

constexpr double kTextGray = 0.86;
constexpr double kLineGray = 0.34;
constexpr double kBoxGray = 0.09;

void setAccent(cairo_t* cairo) {
  cairo_set_source_rgb(cairo, 0.27, 0.61, 0.94);
}

void writeText(cairo_t* cairo, const std::string& text, double x, double middle) {
  drawText(cairo, text, x, middle + 0.36 * kPanelTextSize, kPanelTextSize, kTextGray);
}

// Numbers that a person may drag.
void writeNumber(cairo_t* cairo, const std::string& text, double x, double middle) {
  cairo_set_font_size(cairo, kPanelTextSize);
  setAccent(cairo);
  cairo_move_to(cairo, x, middle + 0.36 * kPanelTextSize);
  cairo_show_text(cairo, text.c_str());
}

std::string decimals(double number, int count) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", count, number);
  return text;
}

void tracePill(cairo_t* cairo, double x, double y, double width, double height, double radius) {
  constexpr double kQuarter = std::numbers::pi / 2;
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, x + width - radius, y + radius, radius, -kQuarter, 0);
  cairo_arc(cairo, x + width - radius, y + height - radius, radius, 0, kQuarter);
  cairo_arc(cairo, x + radius, y + height - radius, radius, kQuarter, 2 * kQuarter);
  cairo_arc(cairo, x + radius, y + radius, radius, 2 * kQuarter, 3 * kQuarter);
  cairo_close_path(cairo);
}

void drawFrame(cairo_t* cairo, double x, double middle, double width, double height) {
  tracePill(cairo, x + 0.5, middle - height / 2 + 0.5, width - 1, height - 1, kCorner);
  setGray(cairo, kBoxGray);
  cairo_fill_preserve(cairo);
  setGray(cairo, kLineGray);
  cairo_set_line_width(cairo, 1);
  cairo_stroke(cairo);
}

void drawChoice(cairo_t* cairo, const std::string& text, double x, double middle) {
  drawFrame(cairo, x, middle, kBoxWidth, kBoxHeight);
  writeText(cairo, text, x + 8, middle);
  setGray(cairo, kTextGray);
  cairo_move_to(cairo, x + kBoxWidth - 16, middle - 2);
  cairo_line_to(cairo, x + kBoxWidth - 8, middle - 2);
  cairo_line_to(cairo, x + kBoxWidth - 12, middle + 3);
  cairo_close_path(cairo);
  cairo_fill(cairo);
}

void drawTrack(cairo_t* cairo, hostkit::Range range, double number, double x, double middle) {
  const double reach = range.max > range.min ? (number - range.min) / (range.max - range.min) : 0;
  const double knob = x + kTrackLength * std::clamp(reach, 0.0, 1.0);
  cairo_set_line_width(cairo, 2);
  setGray(cairo, kLineGray);
  cairo_move_to(cairo, x, middle);
  cairo_line_to(cairo, x + kTrackLength, middle);
  cairo_stroke(cairo);
  setAccent(cairo);
  cairo_move_to(cairo, x, middle);
  cairo_line_to(cairo, knob, middle);
  cairo_stroke(cairo);
  setGray(cairo, kTextGray);
  cairo_arc(cairo, knob, middle, 4, 0, 2 * std::numbers::pi);
  cairo_fill(cairo);
}

// 0 degrees points up, and angles grow clockwise.
void drawDial(cairo_t* cairo, double degrees, double x, double middle) {
  cairo_new_path(cairo);
  cairo_set_line_width(cairo, 1.2);
  setGray(cairo, kLineGray);
  cairo_arc(cairo, x, middle, kDialRadius, 0, 2 * std::numbers::pi);
  cairo_stroke(cairo);
  cairo_save(cairo);
  cairo_translate(cairo, x, middle);
  cairo_rotate(cairo, degrees * std::numbers::pi / 180);
  setAccent(cairo);
  cairo_move_to(cairo, 0, 0);
  cairo_line_to(cairo, 0, -kDialRadius);
  cairo_stroke(cairo);
  cairo_restore(cairo);
}

void drawSwatch(cairo_t* cairo, const PF_Pixel& color, double x, double middle) {
  tracePill(cairo, x + 0.5, middle - kSwatchHeight / 2 + 0.5, kSwatchWidth - 1, kSwatchHeight - 1,
            kCorner);
  cairo_set_source_rgb(cairo, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
  cairo_fill_preserve(cairo);
  setGray(cairo, kLineGray);
  cairo_set_line_width(cairo, 1);
  cairo_stroke(cairo);
}

void drawCheckbox(cairo_t* cairo, bool checked, const std::string& text, double x, double middle) {
  drawFrame(cairo, x, middle, kCheckSide, kCheckSide);
  writeText(cairo, text.empty() ? (checked ? "on" : "off") : text, x + kCheckSide + 8, middle);
  if (!checked) return;
  setAccent(cairo);
  cairo_set_line_width(cairo, 2);
  cairo_move_to(cairo, x + 3, middle);
  cairo_line_to(cairo, x + 5.5, middle + 3);
  cairo_line_to(cairo, x + 10, middle - 3.5);
  cairo_stroke(cairo);
}

// A preset may hold an item that the popup does not have.
std::string itemText(const hostkit::Parameter& parameter, A_long item) {
  const bool known = item >= 1 && item <= static_cast<A_long>(parameter.items.size());
  return known ? parameter.items[static_cast<std::size_t>(item) - 1] : std::to_string(item);
}

}  // namespace

void drawPanelValue(cairo_t* cairo, const hostkit::Parameter& parameter, const PF_ParamDef& value,
                    double left, double middle) {
  const PF_ParamDefUnion& u = value.u;
  switch (parameter.type()) {
    case PF_Param_SLIDER:
      writeNumber(cairo, std::to_string(u.sd.value), left, middle);
      return drawTrack(cairo, *hostkit::sliderRange(parameter), u.sd.value, left + kSymbolLeft,
                       middle);
    case PF_Param_FIX_SLIDER:
      writeNumber(cairo, decimals(u.fd.value / hostkit::kFixedOne, u.fd.precision), left, middle);
      return drawTrack(cairo, *hostkit::sliderRange(parameter), u.fd.value / hostkit::kFixedOne,
                       left + kSymbolLeft, middle);
    case PF_Param_ANGLE:
      writeNumber(cairo, decimals(u.ad.value / hostkit::kFixedOne, 1) + "°", left, middle);
      return drawDial(cairo, u.ad.value / hostkit::kFixedOne, left + kSymbolLeft + kDialRadius,
                      middle);
    case PF_Param_POINT:
      return writeNumber(cairo,
                         decimals(u.td.x_value / hostkit::kFixedOne, 1) + ", " +
                             decimals(u.td.y_value / hostkit::kFixedOne, 1),
                         left, middle);
    case PF_Param_POPUP:
      return drawChoice(cairo, itemText(parameter, u.pd.value), left, middle);
    case PF_Param_PATH:
      return drawChoice(cairo,
                        u.path_d.path_id == 0 ? "None" : "Mask " + std::to_string(u.path_d.path_id),
                        left, middle);
    case PF_Param_COLOR:
      return drawSwatch(cairo, u.cd.value, left, middle);
    case PF_Param_CHECKBOX:
      return drawCheckbox(cairo, u.bd.value != 0, parameter.checkboxText, left, middle);
    default:
      return;
  }
}

}  // namespace cli
