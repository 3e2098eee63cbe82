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
  bool rainbowOn;
  float rainbowShift;
  float textureMix;

  float shiftStrength() const { return std::fabs(rainbowShift); }

  /// Distances from the centre as shares of the radius, for the lanes from step `index` on.
  Float distances(std::int32_t index, float rowSquare) const {
    const Float fx = L::indices(index) - disc.fractionX();
    return L::squareRoot(fx * fx + rowSquare) / disc.radius();
  }

  Float plotValue(Float k) const { return L::clampUnit(k * value) * fullScale; }
};

/// A single fall-off from the centre, recoloured by distance when the rainbow is on.
template <class Isa>
class SimpleGlowShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  explicit SimpleGlowShader(const Glow<Isa>& glow) : glow_(glow), base_(rgbToHls(glow.color)) {}

  bool variesPen() const { return glow_.rainbowOn; }
  Rgb pen() const { return glow_.color; }

  RowSpans beginRow(std::int32_t row, IndexRange visible) {
    rowSquare_ = glow_.disc.rowSquare(row);
    return {glow_.disc.rowSpan(rowSquare_, visible, true), {}};
  }

  void shade(std::int32_t index, std::int32_t count, ShadedRun& run) {
    for (std::int32_t i = 0; i < count; i += L::kCount) {
      const Float t = glow_.distances(index + i, rowSquare_);
      L::store(run.value + i, glow_.plotValue(1.0f - t * t));
      if (glow_.rainbowOn) storeRainbow(run, i, t * t);
    }
  }

 private:
  void storeRainbow(ShadedRun& run, std::int32_t i, Float p) const {
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = glow_.shiftStrength();
    const Float lightness =
        L::clamp(static_cast<float>(base_.lightness) - q * strength, 120.0f, 240.0f);
    const Float saturation =
        L::minimum(static_cast<float>(base_.saturation) + 2.0f * p * strength, L::splat(240.0f));
    const Float shift = (q + p * 255.0f * glow_.textureMix / 1000.0f) * glow_.rainbowShift;
    storeRecoloured<Isa>(run, i, L::splat(static_cast<float>(base_.hue)), shift, lightness,
                         saturation);
  }

  const Glow<Isa>& glow_;
  Hls base_;
  float rowSquare_ = 0.0f;
};

/// A core, white when the glow scale is above 1, and a fringe that loses red, blue and green at
/// different distances.
template <class Isa>
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

  bool variesPen() const { return true; }
  Rgb pen() const { return glow_.color; }

  RowSpans beginRow(std::int32_t row, IndexRange visible) {
    rowSquare_ = glow_.disc.rowSquare(row);
    return {glow_.disc.rowSpan(rowSquare_, visible, true), {}};
  }

  void shade(std::int32_t index, std::int32_t count, ShadedRun& run) {
    const float redStart = 2.0f * core_;
    const float blueStart = 1.1f * core_;
    for (std::int32_t i = 0; i < count; i += L::kCount) {
      const Float t = glow_.distances(index + i, rowSquare_);
      const Float g = (t - core_) / greenRange_;
      L::store(run.value + i, glow_.plotValue(1.0f - g));
      const Float core = g < 0.0f ? L::splat(255.0f) : Float{};
      const Int red = fringed(glow_.color.red, (t - redStart) / redRange_, core);
      const Int green = fringed(glow_.color.green, g, core);
      const Int blue = fringed(glow_.color.blue, (t - blueStart) / blueRange_, core);
      L::store(run.red + i, red);
      L::store(run.green + i, green);
      L::store(run.blue + i, blue);
      if (glow_.rainbowOn) recolourFringe(run, i, g, red, green, blue);
    }
  }

 private:
  /// The channel after the loss that begins where `share` reaches 0; before that, `share` is
  /// negative and the loss would be a gain. `core` is 255 in the white core and 0 elsewhere.
  static Int fringed(std::int32_t channel, Float share, Float core) {
    const Float full = L::splat(static_cast<float>(channel));
    const Float lost = L::maximum(full - 255.0f * share, Float{});
    return L::toInt(L::maximum(L::minimum(lost, full), core));
  }

  /// Turns the pens outside the core, whose pens stay as they are.
  void recolourFringe(ShadedRun& run, std::int32_t i, Float g, Int red, Int green, Int blue) const {
    const auto base = HlsLanes<Isa>::fromRgb(L::toFloat(red), L::toFloat(green), L::toFloat(blue));
    const Float saturation =
        L::minimum(base.saturation + 2.0f * g * glow_.shiftStrength(), L::splat(240.0f));
    const Float shift =
        ((g / 4.0f) * (g / 4.0f) + g * 255.0f * glow_.textureMix / 1000.0f) * glow_.rainbowShift;
    const Int inCore = g < 0.0f;
    storeRecoloured<Isa>(run, i, base.hue, inCore ? Float{} : shift, base.lightness,
                         inCore ? Float{} : saturation);
    L::store(run.red + i, inCore ? red : L::load(run.red + i));
    L::store(run.green + i, inCore ? green : L::load(run.green + i));
    L::store(run.blue + i, inCore ? blue : L::load(run.blue + i));
  }

  const Glow<Isa>& glow_;
  float core_;
  float greenRange_, redRange_, blueRange_;
  float rowSquare_ = 0.0f;
};

template <class Isa>
void paintGlowStar(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                   GlowProfile profile) {
  const std::int32_t radius = truncToInt(size / 2.0f);
  if (radius <= 0) return;
  DrawingState& state = drawing.state;
  state.rainbowOn = state.rainbowShift != 0.0f;
  const Glow<Isa> glow{Disc(x, y, radius),        color,           value,
                       drawing.layer.fullScale(), state.rainbowOn, state.rainbowShift,
                       state.textureMix};
  const auto rowOf = [&](std::int32_t dy) { return glow.disc.rowOf(dy); };
  const auto columnOf = [&](std::int32_t dx) { return glow.disc.columnOf(dx); };
  if (profile == GlowProfile::Full) {
    FullGlowShader<Isa> shader(glow, state.glowScale);
    paintSprite<Isa>(drawing, glow.disc.steps(), rowOf, columnOf, shader);
  } else {
    SimpleGlowShader<Isa> shader(glow);
    paintSprite<Isa>(drawing, glow.disc.steps(), rowOf, columnOf, shader);
  }
}

}  // namespace brisel
