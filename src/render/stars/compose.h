// From stars to sprites. A star's life decides how it looks in this frame (fate.cpp); it carries a
// halo and a blink (elements.cpp) and has a body (body.cpp); each of these is a sprite, whose
// record is made here as well (sprites.cpp). Every random number that a frame's looks need happens
// here, in order, and whatever one sprite leaves to the next is read and written here alone.
#pragma once

#include <cstdint>
#include <span>

#include "core/random.h"
#include "core/render_settings.h"
#include "engine/particle.h"
#include "render/sprite_list.h"
#include "render/sprites/specs.h"

namespace brisel {

/// What sprites leave to later ones, of this frame and the next: each reads it as the last writer
/// left it. These are its values when the effect is loaded.
struct SpriteState {
  float rainbowShift = 0.0f;  // of hue, pixel by pixel; 0 means none
  bool rainbowOn = true;
  float currentRandomFactor = 0.0f;  // of the current star
  float glowScale = 0.0f;
  std::uint8_t crossVariant = 0;  // kTexturedCross, or plain
  float textureScale = 0.0f;
  float textureMix = 0.0f;
};

inline constexpr std::uint8_t kPlainCross = 1;
inline constexpr std::uint8_t kTexturedCross = 3;

/// One frame's composing: what it reads, takes random numbers from, and hands its sprites to. All
/// of it is borrowed.
struct Composition {
  const RenderSettings& settings;
  RandomGenerator& random;
  SpriteState& state;
  SpriteList* sprites;  // null: nothing is to be painted

  bool isPainted() const { return sprites != nullptr; }

  template <class Spec>
  void add(const Spec& sprite) const {
    if (isPainted()) sprites->add(sprite);
  }
};

/// Composes the stars of one frame, oldest first, each as its age and terminate type ask: not
/// at all when its time is over, four times while it explodes, else once. An explosion or flash may
/// change a star's type for good.
void drawAllStars(const Composition& composition, std::span<Particle> stars);

/// A star's looks at one moment.
struct StarLook {
  StarType type;
  float size;   // pixels
  float width;  // pixels
  float angle;  // degrees
  std::int32_t rays;
  Rgb color;
  float value;
  BlendRule rule;  // of the body
};

/// One copy of a star at its position: its halo and blink, its oscillation and jitter of the
/// moment, and its body.
void drawStar(const Composition& composition, const Particle& star, const StarLook& look);

/// Takes the random numbers of a star that nobody sees and that leaves nothing else to later ones,
/// whatever it looks like. False, with nothing taken, where that is not so.
bool passUnseen(const Composition& composition, const Particle& star);

/// The star that elements are composed for, as it stands before its oscillation and jitter.
struct ElementStar {
  PointF center;
  float size;   // pixels
  float angle;  // degrees
  Rgb color;
  float value;
  std::int32_t seed;  // -131..131; gives the star its own colors, sizes and picks
};

/// The halo, then the blink, as "Type of halo" and "Type of blink" say.
void drawAdditionalElements(const Composition& composition, const ElementStar& star);

/// The rule for a sprite that blends by `mode1` and `mode2` in the first two modes of "Add mode";
/// the third lightens, whatever the sprite.
BlendRule ruleFor(AddMode mode, BlendRule mode1, BlendRule mode2);

/// What every sprite is given. The state adds the rest.
struct SpriteLook {
  PointF center;
  float size;  // glow and blics: diameter; cross: radius; rays: length. Pixels
  Rgb color;
  float value;
  BlendRule rule;
};

/// Reads glowScale, rainbowShift and textureMix; sets rainbowOn.
void drawGlowStar(const Composition& composition, const SpriteLook& look, GlowProfile profile);

/// Reads rainbowShift, crossVariant, textureScale and textureMix; sets rainbowOn.
void drawCrossStar(const Composition& composition, const SpriteLook& look, float angleRadians);

/// `ringWidth` is a share of the radius; a disc has none. Reads rainbowShift and rainbowOn; a ring
/// sets textureScale.
void drawBlicsStar(const Composition& composition, const SpriteLook& look, BlicsProfile profile,
                   float ringWidth = 0.0f);

/// What rays are given in addition. Types other than Type1 to Type5 have no rays.
struct RayFan {
  StarType type;
  float width;
  float angleDegrees;
  float count;
};

/// Reads rainbowShift, rainbowOn and currentRandomFactor.
void drawRayStar(const Composition& composition, const SpriteLook& look, const RayFan& fan);

}  // namespace brisel
