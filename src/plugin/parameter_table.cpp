#include "plugin/parameter_table.h"

#include <iterator>

#include "plugin/sdk/codes.h"

namespace brisel {
namespace {

struct Range {
  std::int32_t min;
  std::int32_t max;
};

constexpr ParameterSpec ranged(PF_ParamType type, const char* label, Range valid, Range slider,
                               std::int32_t initial) {
  ParameterSpec spec{type, label};
  spec.validMin = valid.min;
  spec.validMax = valid.max;
  spec.sliderMin = slider.min;
  spec.sliderMax = slider.max;
  spec.initial = initial;
  return spec;
}

constexpr ParameterSpec fixedSlider(const char* label, Range valid, Range slider,
                                    std::int32_t initial) {
  return ranged(PF_Param_FIX_SLIDER, label, valid, slider, initial);
}

constexpr ParameterSpec slider(const char* label, Range valid, Range slider, std::int32_t initial) {
  return ranged(PF_Param_SLIDER, label, valid, slider, initial);
}

constexpr ParameterSpec angle(const char* label, std::int32_t degrees) {
  return ranged(PF_Param_ANGLE, label, {}, {}, degrees);
}

constexpr ParameterSpec point(const char* label, std::int32_t percentX, std::int32_t percentY) {
  ParameterSpec spec{PF_Param_POINT, label};
  spec.initial = percentX;
  spec.initialY = percentY;
  return spec;
}

constexpr ParameterSpec popup(const char* label, std::int32_t item, const char* items) {
  ParameterSpec spec{PF_Param_POPUP, label};
  spec.initial = item;
  spec.items = items;
  return spec;
}

constexpr ParameterSpec color(const char* label, PF_Pixel initial) {
  ParameterSpec spec{PF_Param_COLOR, label};
  spec.color = initial;
  return spec;
}

constexpr ParameterSpec panel(const char* label, A_short width, A_short height) {
  ParameterSpec spec{PF_Param_NO_DATA, label};
  spec.panelWidth = width;
  spec.panelHeight = height;
  return spec;
}

constexpr ParameterSpec checkbox(const char* label) {
  return {PF_Param_CHECKBOX, label};
}
constexpr ParameterSpec path(const char* label) {
  return {PF_Param_PATH, label};
}
constexpr ParameterSpec group(const char* label) {
  return {PF_Param_GROUP_START, label};
}
constexpr ParameterSpec groupEnd() {
  return {PF_Param_GROUP_END};
}

constexpr ParameterSpec kParameters[] = {
    panel("Information", 470, 125),
    group("Emmiter"),
    panel("Emmiter presets", 1025, 75),
    path("Path"),
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
    fixedSlider("Direction dispersion", {0, 10000}, {1, 100}, 5),
    fixedSlider("Completeness of path", {-10000, 10000}, {-100, 100}, 100),
    angle("Shift of path", 0),
    fixedSlider("Intensity", {0, 10000}, {0, 50}, 5),
    slider("Maximum number of stars", {0, 30000}, {10, 500}, 300),
    fixedSlider("Initial speed", {-10000, 10000}, {0, 100}, 50),
    fixedSlider("Speed dispersion", {0, 10000}, {1, 100}, 5),
    fixedSlider("Grow up", {-10000, 10000}, {-250, 250}, 0),
    group("Terminate"),
    popup("Terminate type", 3,
          "Infinity|Time limited|Fade|Explode|Explode glow|Explode sparks|Flash|Flash glow|Mixt"),
    fixedSlider("Time life", {0, 10000}, {1, 100}, 35),
    fixedSlider("Time life dispersion", {0, 100}, {1, 100}, 5),
    fixedSlider("Time fade", {-200, 200}, {-100, 100}, 100),
    fixedSlider("Time of explode", {0, 200}, {1, 100}, 75),
    popup("Terminate color schema", 1, "Initial|Custom|Random"),
    color("Terminate color", {1, 255, 255, 255}),
    groupEnd(),
    fixedSlider("Gravity", {-10000, 10000}, {-15, 15}, 0),
    fixedSlider("Wind", {-10000, 10000}, {0, 100}, 0),
    angle("Direction of wind", 90),
    popup("Oscillation", 1, "None|Swing|Swing synchronous|Round|Round synchronous"),
    fixedSlider("Amplitude of oscillation", {-10000, 10000}, {0, 100}, 10),
    fixedSlider("Frequency of oscillation", {-10000, 10000}, {0, 100}, 10),
    groupEnd(),
    panel("Stars presets", 1025, 75),
    group("Geometry"),
    popup(
        "Type", 2,
        "Dots|Type1|Type2|Type3|Type4|Type5|Type 6|Type 7|Type glow1|Type glow2|Type blics|Random"),
    fixedSlider("Size", {0, 1000}, {0, 150}, 25),
    checkbox("Size depend on source"),
    fixedSlider("Size dispersion", {0, 1000}, {0, 150}, 5),
    fixedSlider("Size amplitude of oscillation", {-1000, 1000}, {0, 100}, 25),
    fixedSlider("Size frequency of oscillation", {0, 1000}, {0, 100}, 25),
    fixedSlider("Size jittering", {0, 1000}, {0, 100}, 25),
    fixedSlider("Width", {0, 1000}, {0, 150}, 50),
    slider("Rays count", {0, 1000}, {0, 25}, 4),
    fixedSlider("Rays count dispersion", {0, 1000}, {0, 150}, 0),
    angle("Angle", 30),
    fixedSlider("Angle dispersion", {0, 1000}, {0, 150}, 5),
    popup("Angle oscillation", 1, "None|Swing|Swing synchronous|Round|Round synchronous"),
    fixedSlider("Angle amplitude of oscillation", {-1000, 1000}, {0, 100}, 25),
    fixedSlider("Angle frequency of oscillation", {0, 1000}, {0, 100}, 25),
    fixedSlider("Angle jittering", {0, 1000}, {0, 100}, 0),
    group("Additional elements"),
    popup("Type of halo", 1, "None|Simple|Normal|Star|Random"),
    fixedSlider("Volume of halo", {0, 1000}, {0, 150}, 75),
    fixedSlider("Size of halo", {0, 1000}, {0, 100}, 50),
    popup("Type of blink", 1, "None|Ring|Blink|Rainbow|Random"),
    fixedSlider("Volume of blink", {0, 1000}, {0, 150}, 75),
    fixedSlider("Size of blink", {0, 1000}, {0, 100}, 50),
    fixedSlider("Volume dispersion of elements", {0, 1000}, {0, 100}, 25),
    fixedSlider("Size dispersion of elements", {0, 1000}, {0, 100}, 25),
    fixedSlider("Color dispersion of elements", {0, 1000}, {0, 100}, 25),
    groupEnd(),
    groupEnd(),
    group("Color"),
    fixedSlider("Value", {-1000, 1000}, {0, 150}, 50),
    fixedSlider("Value dispersion", {0, 1000}, {0, 100}, 15),
    popup("Color schema", 1, "Solid|Source"),
    fixedSlider("Colority", {0, 1000}, {0, 250}, 100),
    fixedSlider("Color dispersion", {0, 1000}, {0, 100}, 15),
    fixedSlider("Color rainbow", {-10000, 10000}, {-100, 100}, 25),
    fixedSlider("Color amplitude of oscillation", {-1000, 1000}, {0, 100}, 25),
    fixedSlider("Color frequency of oscillation", {0, 1000}, {0, 100}, 25),
    fixedSlider("Color jittering", {0, 1000}, {0, 100}, 25),
    color("Color of particles", {0, 255, 255, 255}),
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

}  // namespace brisel
