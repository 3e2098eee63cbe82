#include "render/elements.h"

#include <algorithm>

#include "core/numbers.h"
#include "render/add_mode.h"
#include "render/sprites.h"

namespace brisel {
namespace {

/// An offset from -2999 to 999 that `seed` fixes; negative seeds reach below -1000.
float seededOffset(std::int32_t seed, std::int32_t k) {
  return static_cast<float>((seed * k) % 2000 - 1000);
}

/// The element type that `seed` picks: 2 to 4, or less for some negative seeds.
std::uint8_t seededPick(std::int32_t seed, std::int32_t k) {
  return static_cast<std::uint8_t>((seed * k) % 3 + 2);
}

/// A sprite of the element, after the star's own dispersions.
struct Element {
  Rgb color;
  float size;
  float value;
};

Element seededElement(const RenderSettings& s, const ElementStar& star) {
  const auto channel = [&](std::int32_t base, std::int32_t k) {
    const float offset = seededOffset(star.seed, k) * 0.255f * s.colorDispersionOfElements;
    return truncToInt(std::clamp(static_cast<float>(base) + offset, 0.0f, 255.0f));
  };
  const auto factor = [&](std::int32_t k, float dispersion) {
    return 1.0f + seededOffset(star.seed, k) / 1000.0f * dispersion;
  };
  return {{channel(star.color.red, 1234), channel(star.color.green, 3234),
           channel(star.color.blue, 12234)},
          star.size * factor(34334, s.sizeDispersionOfElements),
          star.value * factor(45134, s.volumeDispersionOfElements)};
}

void drawHalo(Drawing& drawing, const ElementStar& star, const Element& element) {
  const RenderSettings& s = drawing.settings;
  drawing.state.rainbowShift = s.colorRainbow;
  drawing.state.textureMix = 0.0f;
  const float size = s.sizeOfHalo * element.size;
  const float value = element.value * s.volumeOfHalo;
  const HaloType type = s.typeOfHalo == HaloType::Random
                            ? static_cast<HaloType>(seededPick(star.seed, 67443))
                            : s.typeOfHalo;
  switch (type) {
    case HaloType::Simple:
      drawing.blendRule = ruleFor(s.addMode, BlendRule::Over, BlendRule::AddScaled);
      return drawGlowStar(drawing, star.x, star.y, size, element.color, value, GlowProfile::Simple);
    case HaloType::Normal:
      drawing.blendRule = ruleFor(s.addMode, BlendRule::AddSolid, BlendRule::AddSolid);
      drawing.state.glowScale = 1.25f;
      return drawGlowStar(drawing, star.x, star.y, size, element.color, value, GlowProfile::Full);
    case HaloType::Star:
      drawing.blendRule = ruleFor(s.addMode, BlendRule::AddSolid, BlendRule::AddSolid);
      return drawCrossStar(drawing, size, star.x, star.y, -star.angle * kDrawingPi / 180.0f,
                           element.color, value);
    default:
      return;
  }
}

void drawBlink(Drawing& drawing, const ElementStar& star, const Element& element) {
  constexpr float kRingWidth = 0.1f;
  const RenderSettings& s = drawing.settings;
  const auto blics = [&](BlendRule mode1, float shift, BlicsProfile profile) {
    drawing.state.rainbowOn = true;
    drawing.state.textureMix = 0.0f;
    drawing.blendRule = ruleFor(s.addMode, mode1, BlendRule::AddSolid);
    drawing.state.rainbowShift = shift;
    drawBlicsStar(drawing, star.x, star.y, s.sizeOfBlink * element.size, element.color,
                  element.value * s.volumeOfBlink, profile, kRingWidth);
  };
  const BlinkType type = s.typeOfBlink == BlinkType::Random
                             ? static_cast<BlinkType>(seededPick(star.seed, 343457))
                             : s.typeOfBlink;
  switch (type) {
    case BlinkType::Ring:
      return blics(BlendRule::Over, -250.0f, BlicsProfile::Ring);
    case BlinkType::Blink:
      return blics(BlendRule::AddSolid, -50.0f, BlicsProfile::Disc);
    case BlinkType::Rainbow:
      return blics(BlendRule::Over, -250.0f, BlicsProfile::Disc);
    default:
      return;
  }
}

}  // namespace

void drawAdditionalElements(Drawing& drawing, const ElementStar& star) {
  const RenderSettings& s = drawing.settings;
  const bool hasHalo = s.typeOfHalo > HaloType::None;
  const bool hasBlink = s.typeOfBlink > BlinkType::None;
  if (!hasHalo && !hasBlink) return;
  const Element element = seededElement(s, star);
  if (hasHalo) drawHalo(drawing, star, element);
  if (hasBlink) drawBlink(drawing, star, element);
}

}  // namespace brisel
