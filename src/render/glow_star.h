// The radial glow: its two profiles, a simple fall-off and a white core with a colour fringe.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/disc.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprite_painter.h"
#include "render/sprites.h"

namespace brisel {

/// What both profiles know of the glow being drawn.
template <class Isa>
struct Glow {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

  Disc disc;
  Rgb color;
  float value;
  float fullScale;
  float rainbowShift;
  float textureMix;

  float shiftStrength() const { return std::fabs(rainbowShift); }

  void findRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    const Float squares = disc.template rowSquares<Isa>(rows);
    L::store(block.row, squares);
    block.setStretch(0, disc.template nearSteps<Isa>(squares, visible, disc.radius()));
  }

  /// Distances from the centre in pixels.
  Float distances(typename L::Int steps, Float rowSquares) const {
    const Float fx = L::toFloat(steps) - disc.fractionX();
    return L::squareRoot(fx * fx + rowSquares);
  }

  Float plotValue(Float k, Float distance) const {
    return distance <= disc.radius() ? L::clampUnit(k * value) * fullScale : Float{};
  }
};

/// A single fall-off from the centre, recoloured by distance when the rainbow is on.
template <class Isa, bool kRainbow>
class SimpleGlowShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  explicit SimpleGlowShader(const Glow<Isa>& glow) : glow_(glow), pen_(glow.color) {
    if (kRainbow) base_ = rgbToHls(glow.color);
  }

  static constexpr int kStretches = 1;
  void findRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    glow_.findRows(rows, visible, block);
  }

  Shaded<Isa> shade(typename L::Int steps, Float rowSquares) const {
    const Float distance = glow_.distances(steps, rowSquares);
    const Float t = distance / glow_.disc.radius();
    const Float value = glow_.plotValue(1.0f - t * t, distance);
    if constexpr (kRainbow) return {value, rainbowPens(t * t)};
    return {value, pen_.template inAllLanes<Isa>()};
  }

 private:
  Pens<Isa> rainbowPens(Float p) const {
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = glow_.shiftStrength();
    const Float lightness =
        L::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const Float saturation =
        L::minimum(static_cast<float>(base_.saturation) + 2.0f * p * strength, L::splat(240.0f));
    const Float shift = (q + p * 255.0f * glow_.textureMix / 1000.0f) * glow_.rainbowShift;
    return recoloured<Isa>(L::splat(static_cast<float>(base_.hue)), shift, lightness, saturation);
  }

  const Glow<Isa>& glow_;
  Pen pen_;
  Hls base_;
};

/// A core, white when the glow scale is above 1, and a fringe that loses red, blue and green at
/// different distances.
template <class Isa, bool kRainbow>
class FullGlowShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  using Int = typename L::Int;

 public:
  FullGlowShader(const Glow<Isa>& glow, float glowScale)
      : glow_(glow), pen_(glow.color), core_(std::max(0.0f, glowScale - 1.0f)) {
    const auto denominator = [](float d) { return d <= 0.0f ? 1.0f : d; };
    greenRange_ = denominator(1.0f - core_);
    redRange_ = denominator(1.0f - 2.0f * core_);
    blueRange_ = denominator(1.0f - 1.1f * core_);
  }

  static constexpr int kStretches = 1;
  void findRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    glow_.findRows(rows, visible, block);
  }

  Shaded<Isa> shade(typename L::Int steps, Float rowSquares) const {
    const float redStart = 2.0f * core_;
    const float blueStart = 1.1f * core_;
    const Float distance = glow_.distances(steps, rowSquares);
    const Float t = distance / glow_.disc.radius();
    const Float g = (t - core_) / greenRange_;
    const Float core = g < 0.0f ? L::splat(255.0f) : Float{};
    const Pens<Isa> pens = {fringed(pen_.red, (t - redStart) / redRange_, core),
                            fringed(pen_.green, g, core),
                            fringed(pen_.blue, (t - blueStart) / blueRange_, core)};
    const Float value = glow_.plotValue(1.0f - g, distance);
    if constexpr (kRainbow) return {value, rainbowPens(g, pens)};
    return {value, pens};
  }

 private:
  /// The channel after the loss that begins where `share` reaches 0; before that, `share` is
  /// negative and the loss would be a gain. `core` is 255 in the white core and 0 elsewhere.
  static Float fringed(float channel, Float share, Float core) {
    const Float full = L::splat(channel);
    const Float lost = L::maximum(full - 255.0f * share, Float{});
    return L::truncated(L::maximum(L::minimum(lost, full), core));
  }

  /// Turns the pens outside the core, whose pens stay as they are.
  Pens<Isa> rainbowPens(Float g, const Pens<Isa>& pens) const {
    const auto base = HlsLanes<Isa>::fromRgb(pens.red, pens.green, pens.blue);
    const Float saturation =
        L::minimum(base.saturation + 2.0f * g * glow_.shiftStrength(), L::splat(240.0f));
    const Float shift =
        ((g / 4.0f) * (g / 4.0f) + g * 255.0f * glow_.textureMix / 1000.0f) * glow_.rainbowShift;
    const Int inCore = g < 0.0f;
    const Pens<Isa> turned = recoloured<Isa>(base.hue, inCore ? Float{} : shift, base.lightness,
                                             inCore ? Float{} : saturation);
    return {inCore ? pens.red : turned.red, inCore ? pens.green : turned.green,
            inCore ? pens.blue : turned.blue};
  }

  const Glow<Isa>& glow_;
  Pen pen_;
  float core_;
  float greenRange_, redRange_, blueRange_;
};

template <class Isa, bool kRainbow>
void paintGlowProfile(Drawing& drawing, const Glow<Isa>& glow, GlowProfile profile) {
  glow.disc.placeOn(drawing.layer, drawing.grid);
  if (drawing.grid.empty()) return;
  if (profile == GlowProfile::Full) {
    paintSprite<Isa>(drawing, FullGlowShader<Isa, kRainbow>(glow, drawing.state.glowScale));
  } else {
    paintSprite<Isa>(drawing, SimpleGlowShader<Isa, kRainbow>(glow));
  }
}

template <class Isa>
void paintGlowStar(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                   GlowProfile profile) {
  const std::int32_t radius = truncToInt(size / 2.0f);
  if (radius <= 0) return;
  DrawingState& state = drawing.state;
  state.rainbowOn = state.rainbowShift != 0.0f;
  const Glow<Isa> glow{Disc(x, y, radius), color,           value, drawing.layer.fullScale(),
                       state.rainbowShift, state.textureMix};
  if (state.rainbowOn) {
    paintGlowProfile<Isa, true>(drawing, glow, profile);
  } else {
    paintGlowProfile<Isa, false>(drawing, glow, profile);
  }
}

}  // namespace brisel
