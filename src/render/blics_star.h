// Blics: a disc with a bright rim, or a ring.
#pragma once

#include <algorithm>
#include <cmath>

#include "render/disc.h"
#include "render/recolour.h"
#include "render/simd.h"
#include "render/sprite_painter.h"
#include "render/sprites.h"

namespace brisel {

/// What both profiles know of the disc or ring being drawn. Distances are shares of the radius.
struct Blics {
  Disc disc;
  Rgb color;
  float value;
  float fullScale;
  bool rainbowOn;
  float rainbowShift;
  float rim;    // disc: width of the bright rim; ring: not used
  float ring;   // ring: half the ring's extent
  float outer;  // disc: where the rim is brightest; ring: likewise
  float inner;  // ring: where it begins
};

template <class Isa, BlicsProfile kProfile>
class BlicsShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  explicit BlicsShader(const Blics& blics) : blics_(blics), base_(rgbToHls(blics.color)) {}

  bool variesPen() const { return blics_.rainbowOn; }
  Rgb pen() const { return blics_.color; }

  RowSpans beginRow(std::int32_t row, IndexRange visible) {
    rowSquare_ = blics_.disc.rowSquare(row);
    const IndexRange span = blics_.disc.rowSpan(rowSquare_, visible, false);
    if constexpr (kProfile == BlicsProfile::Disc) return {span, {}};
    // Inside the ring nothing is plotted; the margin keeps pixels whose rounding could matter.
    const float clear = (blics_.inner - 0.001f) * blics_.disc.radius();
    const IndexRange hole = blics_.disc.rowHole(rowSquare_, span, clear);
    return {{span.begin, hole.begin}, {hole.end, span.end}};
  }

  void shade(std::int32_t index, std::int32_t count, ShadedRun& run) {
    for (std::int32_t i = 0; i < count; i += L::kCount) {
      const Float fx = L::indices(index + i) - blics_.disc.fractionX();
      const Float t = L::squareRoot(fx * fx + rowSquare_) / blics_.disc.radius();
      L::store(run.value + i, L::clampUnit(shape(t) * blics_.value) * blics_.fullScale);
      if (blics_.rainbowOn) storeRainbow(run, i, t);
    }
  }

 private:
  Float shape(Float t) const {
    const Float off = L::absolute(blics_.outer - t);
    if constexpr (kProfile == BlicsProfile::Disc) {
      const Float toEdge = off / blics_.rim;
      const Float toCentre = L::squareRoot(L::minimum(off * 0.7f, L::splat(1.0f)));
      return 1.0f - (t >= blics_.outer ? toEdge : toCentre);
    } else {
      const Float toInside = 1.0f - (t - blics_.inner) / blics_.ring;
      const Float j = t >= blics_.outer ? off / blics_.ring : toInside;
      return 1.0f - j * j;
    }
  }

  void storeRainbow(ShadedRun& run, std::int32_t i, Float t) const {
    const Float p =
        kProfile == BlicsProfile::Ring ? L::absolute(t - blics_.inner) * 10.0f + 1.0f : t * 5.0f;
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(blics_.rainbowShift);
    const Float saturation =
        L::clamp(static_cast<float>(base_.saturation) + 2.0f * p * strength, 100.0f, 240.0f);
    const Float lightness =
        L::maximum(static_cast<float>(base_.lightness) - q * strength, L::splat(120.0f));
    storeRecoloured<Isa>(run, i, L::splat(static_cast<float>(base_.hue)), q * blics_.rainbowShift,
                         lightness, saturation);
  }

  const Blics& blics_;
  Hls base_;
  float rowSquare_ = 0.0f;
};

template <class Isa, BlicsProfile kProfile>
void paintBlicsProfile(Drawing& drawing, const Blics& blics) {
  BlicsShader<Isa, kProfile> shader(blics);
  paintSprite<Isa>(
      drawing, blics.disc.steps(), [&](std::int32_t dy) { return blics.disc.rowOf(dy); },
      [&](std::int32_t dx) { return blics.disc.columnOf(dx); }, shader);
}

template <class Isa>
void paintBlicsStar(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                    BlicsProfile profile, float ringWidth) {
  constexpr float kLeastRingWidth = 0.03f;
  const std::int32_t n = truncToInt(size / 2.0f);
  if (n <= 0 || value <= 0.0f) return;
  DrawingState& state = drawing.state;
  Blics blics{Disc(x, y, n),
              color,
              value,
              drawing.layer.fullScale(),
              state.rainbowOn,
              state.rainbowShift,
              0.0f,
              0.0f,
              0.0f,
              0.0f};
  if (profile == BlicsProfile::Disc) {
    const float radius = static_cast<float>(n);
    blics.rim = std::max(radius / 10.0f, 2.0f) / radius;
    blics.outer = 1.0f - blics.rim;
    return paintBlicsProfile<Isa, BlicsProfile::Disc>(drawing, blics);
  }

  if (ringWidth <= 0.0f) return;
  if (ringWidth < kLeastRingWidth) {
    // A thinner ring would break up into single pixels; it dims instead.
    blics.value *= std::sqrt(1.0f - (kLeastRingWidth - ringWidth) / kLeastRingWidth);
    ringWidth = kLeastRingWidth;
  }
  blics.value = std::min(blics.value, 1.0f);
  blics.ring = ringWidth;
  blics.outer = 1.0f - ringWidth;
  blics.inner = blics.outer - ringWidth;
  state.textureScale = 0.5f;
  paintBlicsProfile<Isa, BlicsProfile::Ring>(drawing, blics);
}

}  // namespace brisel
