// The radial glow: its two profiles, a simple fall-off and a white core with a fringe of color.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/raster/recolor.h"
#include "render/raster/runs.h"
#include "render/simd/lanes.h"
#include "render/sprites/disc.h"
#include "render/sprites/specs.h"

namespace brisel {

/// What both profiles share.
template <class Isa>
class Glow {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  Glow(const GlowSpec& spec, float fullScale)
      : disc_(spec.center, spec.radius), value_(spec.value), fullScale_(fullScale) {}

  float radius() const { return disc_.radius(); }

  Float rowSquares(typename L::Int rows) const { return disc_.rowSquares<Isa>(rows); }

  void findStretches(Float rowSquares, IndexRange visible, RowBlock<Isa>& block) const {
    block.setStretch(0, disc_.nearSteps<Isa>(rowSquares, visible, disc_.radius()));
  }

  Float distances(typename L::Int steps, Float rowSquares) const {
    return disc_.distances<Isa>(steps, rowSquares);
  }

  Float plotValue(Float k, Float distance) const {
    return distance <= disc_.radius() ? L::clampUnit(k * value_) * fullScale_ : Float{};
  }

 private:
  Disc disc_;
  float value_;
  float fullScale_;
};

/// A single fall-off from the center, recolored by distance when the rainbow is on.
template <class Isa, bool kRainbow>
class SimpleGlowShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  SimpleGlowShader(const GlowSpec& spec, float fullScale)
      : glow_(spec, fullScale),
        pen_(spec.color),
        rainbowShift_(spec.rainbowShift),
        textureMix_(spec.textureMix) {
    if (kRainbow) base_ = rgbToHls(spec.color);
  }

  static constexpr int kStretches = 1;
  static constexpr int kNarrowShare = kRainbow ? 4 : 1;
  Float rowValues(typename L::Int rows) const { return glow_.rowSquares(rows); }
  void findStretches(Float rowSquares, IndexRange visible, RowBlock<Isa>& block) const {
    glow_.findStretches(rowSquares, visible, block);
  }

  Shaded<Isa> shade(typename L::Int steps, Float rowSquares) const requires(!kRainbow) {
    const Float distance = glow_.distances(steps, rowSquares);
    const Float t = distance / glow_.radius();
    return {glow_.plotValue(1.0f - t * t, distance), pen_.template inAllLanes<Isa>()};
  }

  TurnedShade<Isa> prepare(typename L::Int steps, Float rowSquares) const requires kRainbow {
    const Float distance = glow_.distances(steps, rowSquares);
    const Float t = distance / glow_.radius();
    return {glow_.plotValue(1.0f - t * t, distance), turned(t * t)};
  }
  Shaded<Isa> shade(const TurnedShade<Isa>& prepared) const {
    return {prepared.value, recolored<Isa>(prepared.color)};
  }

 private:
  Turned<Isa> turned(Float p) const {
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(rainbowShift_);
    const Float lightness =
        L::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const Float saturation =
        L::minimum(static_cast<float>(base_.saturation) + 2.0f * p * strength, L::splat(240.0f));
    const Float shift = (q + p * 255.0f * textureMix_ / 1000.0f) * rainbowShift_;
    return {static_cast<float>(base_.hue) + shift, lightness, saturation};
  }

  Glow<Isa> glow_;
  Pen pen_;
  float rainbowShift_;
  float textureMix_;
  Hls base_;
};

/// A core, white when the glow scale is above 1, and a fringe that loses red, blue and green at
/// different distances.
template <class Isa, bool kRainbow>
class FullGlowShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  FullGlowShader(const GlowSpec& spec, float fullScale)
      : glow_(spec, fullScale),
        pen_(spec.color),
        rainbowShift_(spec.rainbowShift),
        textureMix_(spec.textureMix),
        core_(std::max(0.0f, spec.glowScale - 1.0f)) {
    const auto denominator = [](float d) { return d <= 0.0f ? 1.0f : d; };
    greenRange_ = denominator(1.0f - core_);
    redRange_ = denominator(1.0f - 2.0f * core_);
    blueRange_ = denominator(1.0f - 1.1f * core_);
  }

  static constexpr int kStretches = 1;
  static constexpr int kNarrowShare = kRainbow ? 4 : 1;
  Float rowValues(typename L::Int rows) const { return glow_.rowSquares(rows); }
  void findStretches(Float rowSquares, IndexRange visible, RowBlock<Isa>& block) const {
    glow_.findStretches(rowSquares, visible, block);
  }

  Shaded<Isa> shade(typename L::Int steps, Float rowSquares) const requires(!kRainbow) {
    const Fringe fringe = fringeAt(steps, rowSquares);
    return {fringe.value, fringe.pens};
  }

  TurnedShade<Isa> prepare(typename L::Int steps, Float rowSquares) const requires kRainbow {
    const Fringe fringe = fringeAt(steps, rowSquares);
    return {fringe.value, turned(fringe.fromCore, fringe.pens)};
  }
  Shaded<Isa> shade(const TurnedShade<Isa>& prepared) const {
    return {prepared.value, recolored<Isa>(prepared.color)};
  }

 private:
  struct Fringe {
    Float fromCore;  // 0 at the core's edge, 1 at the rim; negative in the core
    Float value;
    Pens<Isa> pens;
  };

  Fringe fringeAt(typename L::Int steps, Float rowSquares) const {
    const float redStart = 2.0f * core_;
    const float blueStart = 1.1f * core_;
    const Float distance = glow_.distances(steps, rowSquares);
    const Float t = distance / glow_.radius();
    const Float g = (t - core_) / greenRange_;
    const Float core = g < 0.0f ? L::splat(255.0f) : Float{};
    return {g,
            glow_.plotValue(1.0f - g, distance),
            {fringed(pen_.red, (t - redStart) / redRange_, core), fringed(pen_.green, g, core),
             fringed(pen_.blue, (t - blueStart) / blueRange_, core)}};
  }

  /// The channel after the loss that begins where `share` reaches 0; before that, `share` is
  /// negative and the loss would be a gain. `core` is 255 in the white core and 0 elsewhere.
  static Float fringed(float channel, Float share, Float core) {
    const Float full = L::splat(channel);
    const Float lost = L::maximum(full - 255.0f * share, Float{});
    return L::truncated(L::maximum(L::minimum(lost, full), core));
  }

  /// The core's white stays as it is, whatever the hue.
  Turned<Isa> turned(Float g, const Pens<Isa>& pens) const {
    const auto base = HlsLanes<Isa>::fromRgb(pens.red, pens.green, pens.blue);
    const Float saturation =
        L::clamp(base.saturation + 2.0f * g * std::fabs(rainbowShift_), 0.0f, 240.0f);
    const Float shift =
        ((g / 4.0f) * (g / 4.0f) + g * 255.0f * textureMix_ / 1000.0f) * rainbowShift_;
    return {base.hue + shift, base.lightness, saturation};
  }

  Glow<Isa> glow_;
  Pen pen_;
  float rainbowShift_;
  float textureMix_;
  float core_;
  float greenRange_, redRange_, blueRange_;
};

template <class Isa>
void paintGlow(const MutableImageView& image, const PixelGrid& grid, const GlowSpec& glow) {
  const float fullScale = image.fullScale();
  const auto paint = [&](const auto& shader) { paintSprite<Isa>(image, grid, glow.rule, shader); };
  const bool isRecolored = glow.rainbowShift != 0.0f;
  if (glow.profile == GlowProfile::Full) {
    isRecolored ? paint(FullGlowShader<Isa, true>(glow, fullScale))
                : paint(FullGlowShader<Isa, false>(glow, fullScale));
  } else {
    isRecolored ? paint(SimpleGlowShader<Isa, true>(glow, fullScale))
                : paint(SimpleGlowShader<Isa, false>(glow, fullScale));
  }
}

}  // namespace brisel
