#include <algorithm>
#include <cmath>

#include "core/numbers.h"
#include "core/trigonometry.h"
#include "render/raster/recolor.h"
#include "render/stars/compose.h"

namespace brisel {
namespace {

/// The color and the shift of a sprite that is recolored while the rainbow is on: evenly where the
/// hue does not shift.
struct Recoloring {
  Rgb color;
  float shift;
};

Recoloring recoloringOf(const SpriteState& state, Rgb color, std::int32_t leastSaturation) {
  if (!state.rainbowOn) return {color, 0.0f};
  if (state.rainbowShift != 0.0f) return {color, state.rainbowShift};
  return {recoloredEvenly(color, leastSaturation), 0.0f};
}

}  // namespace

BlendRule ruleFor(AddMode mode, BlendRule mode1, BlendRule mode2) {
  if (mode == AddMode::Mode1) return mode1;
  return mode == AddMode::Mode3 ? BlendRule::Lighten : mode2;
}

void drawGlowStar(const Composition& composition, const SpriteLook& look, GlowProfile profile) {
  const std::int32_t radius = truncToInt(look.size / 2.0f);
  if (radius <= 0) return;
  SpriteState& state = composition.state;
  state.rainbowOn = state.rainbowShift != 0.0f;
  composition.add(GlowSpec{.profile = profile,
                           .rule = look.rule,
                           .radius = radius,
                           .center = look.center,
                           .color = look.color,
                           .value = look.value,
                           .rainbowShift = state.rainbowShift,
                           .textureMix = state.textureMix,
                           .glowScale = state.glowScale});
}

void drawCrossStar(const Composition& composition, const SpriteLook& look, float angleRadians) {
  if (!(look.size > 0.0f)) return;
  SpriteState& state = composition.state;
  state.rainbowOn = state.rainbowShift != 0.0f;
  if (!(look.value > 0.0f) || !composition.isPainted()) return;
  // A cross so far out shows only if it is as large, and rounding would put billions of its steps
  // on the same pixels.
  constexpr float kFarthest = 2147483648.0f;
  const auto [x, y] = look.center;
  if (!(std::fabs(x) < kFarthest && std::fabs(y) < kFarthest)) return;
  const bool isTextured = state.crossVariant == kTexturedCross && state.textureMix != 0.0f;
  composition.add(CrossSpec{.isTextured = isTextured,
                            .rule = look.rule,
                            .radius = look.size,
                            .center = look.center,
                            .cos = cosine(angleRadians),
                            .sin = sine(angleRadians),
                            .color = look.color,
                            .value = look.value,
                            .rainbowShift = state.rainbowShift,
                            .textureScale = state.textureScale,
                            .textureMix = state.textureMix});
}

void drawBlicsStar(const Composition& composition, const SpriteLook& look, BlicsProfile profile,
                   float ringWidth) {
  constexpr std::int32_t kLeastSaturation = 100;
  constexpr float kLeastRingWidth = 0.03f;
  const std::int32_t radius = truncToInt(look.size / 2.0f);
  if (radius <= 0 || look.value <= 0.0f) return;
  float value = look.value;
  float rim = std::max(static_cast<float>(radius) / 10.0f, 2.0f) / static_cast<float>(radius);
  if (profile == BlicsProfile::Ring) {
    if (ringWidth <= 0.0f) return;
    rim = ringWidth;
    if (ringWidth < kLeastRingWidth) {
      // A thinner ring would break up into single pixels; it dims instead.
      value *= std::sqrt(1.0f - (kLeastRingWidth - ringWidth) / kLeastRingWidth);
      rim = kLeastRingWidth;
    }
    value = std::min(value, 1.0f);
    composition.state.textureScale = 0.5f;
  }
  const Recoloring recoloring = recoloringOf(composition.state, look.color, kLeastSaturation);
  composition.add(BlicsSpec{.profile = profile,
                            .rule = look.rule,
                            .radius = radius,
                            .center = look.center,
                            .color = recoloring.color,
                            .value = value,
                            .rainbowShift = recoloring.shift,
                            .rim = rim});
}

void drawRayStar(const Composition& composition, const SpriteLook& look, const RayFan& fan) {
  if (!(fan.count > 0.0f) || !(look.size > 0.0f)) return;
  if (fan.type < StarType::Type1 || fan.type > StarType::Type5) return;
  const SpriteState& state = composition.state;
  // Distances along much shorter rays overflow, and are recolored without a shift as well.
  constexpr float kShortest = 1e-6f;
  const bool isEven = state.rainbowShift == 0.0f && look.size > kShortest;
  composition.add(
      RaySpec{.type = fan.type,
              .rule = look.rule,
              .isSmooth = composition.settings.highQuality,
              .isRecolored = state.rainbowOn && !isEven,
              .isDarkOnLeft = state.currentRandomFactor <= 0.5f,
              .center = look.center,
              .length = look.size,
              .width = fan.width,
              .angleDegrees = fan.angleDegrees,
              .count = fan.count,
              .color = state.rainbowOn && isEven ? recoloredEvenly(look.color, 0) : look.color,
              .value = look.value,
              .rainbowShift = state.rainbowShift});
}

}  // namespace brisel
