#include "effect/parameters.h"

#include <iterator>

namespace brisel {
namespace {

struct Range {
  std::int32_t min;
  std::int32_t max;
};

// LCOV_EXCL_START: run by the compiler alone
constexpr ParameterSpec ranged(ParamKind kind, const char* label, ParamUnit unit, Range valid,
                               Range slider, std::int32_t initial) {
  ParameterSpec spec{kind, label, unit};
  spec.validMin = valid.min;
  spec.validMax = valid.max;
  spec.sliderMin = slider.min;
  spec.sliderMax = slider.max;
  spec.initial = initial;
  return spec;
}

constexpr ParameterSpec number(const char* label, ParamUnit unit, Range valid, Range slider,
                               std::int32_t initial) {
  return ranged(ParamKind::Number, label, unit, valid, slider, initial);
}

constexpr ParameterSpec wholeNumber(const char* label, ParamUnit unit, Range valid, Range slider,
                                    std::int32_t initial) {
  return ranged(ParamKind::WholeNumber, label, unit, valid, slider, initial);
}

constexpr ParameterSpec angle(const char* label, std::int32_t degrees) {
  return ranged(ParamKind::Angle, label, ParamUnit::Degrees, {}, {}, degrees);
}

constexpr ParameterSpec point(const char* label, std::int32_t percentX, std::int32_t percentY) {
  ParameterSpec spec{ParamKind::Point, label, ParamUnit::Pixels};
  spec.initial = percentX;
  spec.initialY = percentY;
  return spec;
}

constexpr ParameterSpec popup(const char* label, std::int32_t item, const char* items) {
  ParameterSpec spec{ParamKind::Popup, label};
  spec.initial = item;
  spec.items = items;
  return spec;
}

/// White; the alpha byte says nothing, but is part of what is declared.
constexpr ParameterSpec color(const char* label, std::uint8_t alpha) {
  ParameterSpec spec{ParamKind::Color, label};
  spec.color = {255, 255, 255};
  spec.colorAlpha = alpha;
  return spec;
}

constexpr ParameterSpec panel(const char* label, std::int16_t width, std::int16_t height) {
  ParameterSpec spec{ParamKind::Panel, label};
  spec.panelWidth = width;
  spec.panelHeight = height;
  return spec;
}

constexpr ParameterSpec checkbox(const char* label) {
  return {ParamKind::Checkbox, label};
}
constexpr ParameterSpec mask(const char* label) {
  return {ParamKind::Mask, label};
}
constexpr ParameterSpec group(const char* label) {
  return {ParamKind::GroupStart, label};
}
constexpr ParameterSpec groupEnd() {
  return {ParamKind::GroupEnd};
}
// LCOV_EXCL_STOP

using enum ParamUnit;

constexpr ParameterSpec kParameters[] = {
    panel("Information", 470, 125),
    group("Emmiter"),
    panel("Emmiter presets", 1025, 75),
    mask("Path"),
    popup("Standard path", 2,
          "Point|Bezier|Line|Polyline|Circle|Source as raster mask|Whole field|Contour alpha "
          "channel"),
    group("Control points"),
    point("Start", 20, 50),
    point("End", 65, 35),
    point("Control start", 35, 35),
    point("Control end", 80, 50),
    groupEnd(),
    popup("Orientation", 3,
          "Direct|Centripetal|Perpendicularly|Perpendicularly opposite|Perpendicularly "
          "random|Along|Along opposite|Add angle|Random all directions"),
    angle("Direction", 0),
    number("Direction dispersion", Percent, {0, 10000}, {1, 100}, 5),
    number("Completeness of path", Percent, {-10000, 10000}, {-100, 100}, 100),
    angle("Shift of path", 0),
    number("Intensity", None, {0, 10000}, {0, 50}, 5),
    wholeNumber("Maximum number of stars", Stars, {0, 30000}, {10, 500}, 300),
    number("Initial speed", None, {-10000, 10000}, {0, 100}, 50),
    number("Speed dispersion", Percent, {0, 10000}, {1, 100}, 5),
    number("Grow up", Percent, {-10000, 10000}, {-250, 250}, 0),
    group("Terminate"),
    popup("Terminate type", 3,
          "Infinity|Time limited|Fade|Explode|Explode glow|Explode sparks|Flash|Flash glow|Mixt"),
    number("Time life", Frames, {0, 10000}, {1, 100}, 35),
    number("Time life dispersion", Percent, {0, 100}, {1, 100}, 5),
    number("Time fade", Percent, {-200, 200}, {-100, 100}, 100),
    number("Time of explode", None, {0, 200}, {1, 100}, 75),
    popup("Terminate color schema", 1, "Initial|Custom|Random"),
    color("Terminate color", 1),
    groupEnd(),
    number("Gravity", None, {-10000, 10000}, {-15, 15}, 0),
    number("Wind", None, {-10000, 10000}, {0, 100}, 0),
    angle("Direction of wind", 90),
    popup("Oscillation", 1, "None|Swing|Swing synchronous|Round|Round synchronous"),
    number("Amplitude of oscillation", None, {-10000, 10000}, {0, 100}, 10),
    number("Frequency of oscillation", None, {-10000, 10000}, {0, 100}, 10),
    groupEnd(),
    panel("Stars presets", 1025, 75),
    group("Geometry"),
    popup(
        "Type", 2,
        "Dots|Type1|Type2|Type3|Type4|Type5|Type 6|Type 7|Type glow1|Type glow2|Type blics|Random"),
    number("Size", None, {0, 1000}, {0, 150}, 25),
    checkbox("Size depend on source"),
    number("Size dispersion", Percent, {0, 1000}, {0, 150}, 5),
    number("Size amplitude of oscillation", Percent, {-1000, 1000}, {0, 100}, 25),
    number("Size frequency of oscillation", None, {0, 1000}, {0, 100}, 25),
    number("Size jittering", None, {0, 1000}, {0, 100}, 25),
    number("Width", None, {0, 1000}, {0, 150}, 50),
    wholeNumber("Rays count", Rays, {0, 1000}, {0, 25}, 4),
    number("Rays count dispersion", None, {0, 1000}, {0, 150}, 0),
    angle("Angle", 30),
    number("Angle dispersion", None, {0, 1000}, {0, 150}, 5),
    popup("Angle oscillation", 1, "None|Swing|Swing synchronous|Round|Round synchronous"),
    number("Angle amplitude of oscillation", Degrees, {-1000, 1000}, {0, 100}, 25),
    number("Angle frequency of oscillation", None, {0, 1000}, {0, 100}, 25),
    number("Angle jittering", None, {0, 1000}, {0, 100}, 0),
    group("Additional elements"),
    popup("Type of halo", 1, "None|Simple|Normal|Star|Random"),
    number("Volume of halo", Percent, {0, 1000}, {0, 150}, 75),
    number("Size of halo", Percent, {0, 1000}, {0, 100}, 50),
    popup("Type of blink", 1, "None|Ring|Blink|Rainbow|Random"),
    number("Volume of blink", Percent, {0, 1000}, {0, 150}, 75),
    number("Size of blink", Percent, {0, 1000}, {0, 100}, 50),
    number("Volume dispersion of elements", Percent, {0, 1000}, {0, 100}, 25),
    number("Size dispersion of elements", Percent, {0, 1000}, {0, 100}, 25),
    number("Color dispersion of elements", Percent, {0, 1000}, {0, 100}, 25),
    groupEnd(),
    groupEnd(),
    group("Color"),
    number("Value", Percent, {-1000, 1000}, {0, 150}, 50),
    number("Value dispersion", Percent, {0, 1000}, {0, 100}, 15),
    popup("Color schema", 1, "Solid|Source"),
    number("Colority", Percent, {0, 1000}, {0, 250}, 100),
    number("Color dispersion", Percent, {0, 1000}, {0, 100}, 15),
    number("Color rainbow", None, {-10000, 10000}, {-100, 100}, 25),
    number("Color amplitude of oscillation", Percent, {-1000, 1000}, {0, 100}, 25),
    number("Color frequency of oscillation", None, {0, 1000}, {0, 100}, 25),
    number("Color jittering", Percent, {0, 1000}, {0, 100}, 25),
    color("Color of particles", 0),
    groupEnd(),
    popup("Add mode", 2, "Mode#1|Mode#2|Mode#3"),
    popup("Mix with original", 1, "Replace|Normal|Add"),
};
static_assert(std::size(kParameters) == kParamCount - 1);

}  // namespace

std::span<const ParameterSpec> declaredParameters() {
  return kParameters;
}

const ParameterSpec& parameterSpec(std::int32_t index) {
  return kParameters[index - 1];
}

ParamIndex findParameter(std::string_view label) {
  if (label.empty()) return kInputLayer;
  for (std::int32_t index = 1; index < kParamCount; ++index) {
    if (parameterSpec(index).label == label) return static_cast<ParamIndex>(index);
  }
  return kInputLayer;
}

}  // namespace brisel
