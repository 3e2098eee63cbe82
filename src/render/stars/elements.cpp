#include <algorithm>

#include "core/numbers.h"
#include "render/stars/compose.h"

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
    return std::clamp(truncToInt(static_cast<float>(base) + offset), 0, 255);
  };
  const auto factor = [&](std::int32_t k, float dispersion) {
    return 1.0f + seededOffset(star.seed, k) / 1000.0f * dispersion;
  };
  return {{channel(star.color.red, 1234), channel(star.color.green, 3234),
           channel(star.color.blue, 12234)},
          star.size * factor(34334, s.sizeDispersionOfElements),
          star.value * factor(45134, s.volumeDispersionOfElements)};
}

void drawHalo(const Composition& composition, const ElementStar& star, const Element& element) {
  const RenderSettings& s = composition.settings;
  SpriteState& state = composition.state;
  state.rainbowShift = s.colorRainbow;
  state.textureMix = 0.0f;
  SpriteLook halo{star.center, s.sizeOfHalo * element.size, element.color,
                  element.value * s.volumeOfHalo,
                  ruleFor(s.addMode, BlendRule::AddSolid, BlendRule::AddSolid)};
  const HaloType type = s.typeOfHalo == HaloType::Random
                            ? static_cast<HaloType>(seededPick(star.seed, 67443))
                            : s.typeOfHalo;
  switch (type) {
    case HaloType::Simple:
      halo.rule = ruleFor(s.addMode, BlendRule::Over, BlendRule::AddScaled);
      return drawGlowStar(composition, halo, GlowProfile::Simple);
    case HaloType::Normal:
      state.glowScale = 1.25f;
      return drawGlowStar(composition, halo, GlowProfile::Full);
    case HaloType::Star:
      return drawCrossStar(composition, halo, -star.angle * kShortPi / 180.0f);
    default:
      return;
  }
}

void drawBlink(const Composition& composition, const ElementStar& star, const Element& element) {
  constexpr float kRingWidth = 0.1f;
  const RenderSettings& s = composition.settings;
  /// Sets the state for a blink of this shift of hue, which later sprites find as well.
  const auto blink = [&](BlendRule mode1, float shift) {
    composition.state.rainbowOn = true;
    composition.state.textureMix = 0.0f;
    composition.state.rainbowShift = shift;
    return SpriteLook{star.center, s.sizeOfBlink * element.size, element.color,
                      element.value * s.volumeOfBlink,
                      ruleFor(s.addMode, mode1, BlendRule::AddSolid)};
  };
  const BlinkType type = s.typeOfBlink == BlinkType::Random
                             ? static_cast<BlinkType>(seededPick(star.seed, 343457))
                             : s.typeOfBlink;
  switch (type) {
    case BlinkType::Ring:
      return drawBlicsStar(composition, blink(BlendRule::Over, -250.0f), BlicsProfile::Ring,
                           kRingWidth);
    case BlinkType::Blink:
      return drawBlicsStar(composition, blink(BlendRule::AddSolid, -50.0f), BlicsProfile::Disc);
    case BlinkType::Rainbow:
      return drawBlicsStar(composition, blink(BlendRule::Over, -250.0f), BlicsProfile::Disc);
    default:
      return;
  }
}

}  // namespace

void drawAdditionalElements(const Composition& composition, const ElementStar& star) {
  const RenderSettings& s = composition.settings;
  const bool hasHalo = s.typeOfHalo > HaloType::None;
  const bool hasBlink = s.typeOfBlink > BlinkType::None;
  if (!hasHalo && !hasBlink) return;
  const Element element = seededElement(s, star);
  if (hasHalo) drawHalo(composition, star, element);
  if (hasBlink) drawBlink(composition, star, element);
}

}  // namespace brisel
