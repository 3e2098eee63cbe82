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

  void beginRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    const Float squares = disc.template rowSquares<Isa>(rows);
    L::store(block.offset, squares);
    block.setStretch(0, disc.template nearSteps<Isa>(squares, visible, disc.radius()));
  }

  /// Distances from the centre in pixels, for the lanes from step `index` on.
  Float distances(std::int32_t index, float rowSquare) const {
    const Float fx = L::indices(index) - disc.fractionX();
    return L::squareRoot(fx * fx + rowSquare);
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
  explicit SimpleGlowShader(const Glow<Isa>& glow) : glow_(glow), pens_(pensOf<Isa>(glow.color)) {
    if (kRainbow) base_ = rgbToHls(glow.color);
  }

  static constexpr int kStretches = 1;
  void beginRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    glow_.beginRows(rows, visible, block);
  }
  void beginRow(float rowSquare) { rowSquare_ = rowSquare; }

  Shaded<Isa> shade(std::int32_t index) const {
    const Float distance = glow_.distances(index, rowSquare_);
    const Float t = distance / glow_.disc.radius();
    const Float value = glow_.plotValue(1.0f - t * t, distance);
    if constexpr (kRainbow) return {value, rainbowPens(t * t)};
    return {value, pens_};
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

  Glow<Isa> glow_;
  Pens<Isa> pens_;
  Hls base_;
  float rowSquare_ = 0.0f;
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
      : glow_(glow), core_(std::max(0.0f, glowScale - 1.0f)) {
    const auto denominator = [](float d) { return d <= 0.0f ? 1.0f : d; };
    greenRange_ = denominator(1.0f - core_);
    redRange_ = denominator(1.0f - 2.0f * core_);
    blueRange_ = denominator(1.0f - 1.1f * core_);
  }

  static constexpr int kStretches = 1;
  void beginRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    glow_.beginRows(rows, visible, block);
  }
  void beginRow(float rowSquare) { rowSquare_ = rowSquare; }

  Shaded<Isa> shade(std::int32_t index) const {
    const float redStart = 2.0f * core_;
    const float blueStart = 1.1f * core_;
    const Float distance = glow_.distances(index, rowSquare_);
    const Float t = distance / glow_.disc.radius();
    const Float g = (t - core_) / greenRange_;
    const Float core = g < 0.0f ? L::splat(255.0f) : Float{};
    const Pens<Isa> pens = {fringed(glow_.color.red, (t - redStart) / redRange_, core),
                            fringed(glow_.color.green, g, core),
                            fringed(glow_.color.blue, (t - blueStart) / blueRange_, core)};
    const Float value = glow_.plotValue(1.0f - g, distance);
    if constexpr (kRainbow) return {value, rainbowPens(g, pens)};
    return {value, pens};
  }

 private:
  /// The channel after the loss that begins where `share` reaches 0; before that, `share` is
  /// negative and the loss would be a gain. `core` is 255 in the white core and 0 elsewhere.
  static Float fringed(std::int32_t channel, Float share, Float core) {
    const Float full = L::splat(static_cast<float>(channel));
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

  Glow<Isa> glow_;
  float core_;
  float greenRange_, redRange_, blueRange_;
  float rowSquare_ = 0.0f;
};

template <class Isa, bool kRainbow>
void paintGlowProfile(Drawing& drawing, const Glow<Isa>& glow, GlowProfile profile) {
  const Placement placement = glow.disc.placeOn(drawing.layer);
  if (placement.empty()) return;
  const auto paint = [&](auto shader) { paintSprite<Isa>(drawing, placement, shader); };
  if (profile == GlowProfile::Full) {
    paint(FullGlowShader<Isa, kRainbow>(glow, drawing.state.glowScale));
  } else {
    paint(SimpleGlowShader<Isa, kRainbow>(glow));
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
