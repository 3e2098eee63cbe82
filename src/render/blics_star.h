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
  float rainbowShift;
  float rim;    // disc: width of the bright rim; ring: not used
  float ring;   // ring: half the ring's extent
  float outer;  // disc: where the rim is brightest; ring: likewise
  float inner;  // ring: where it begins
};

/// What is drawn is borrowed.
template <class Isa, BlicsProfile kProfile, bool kRainbow>
class BlicsShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  explicit BlicsShader(const Blics& blics) : blics_(blics), pen_(blics.color) {
    if (kRainbow) base_ = rgbToHls(blics.color);
  }

  static constexpr int kStretches = kProfile == BlicsProfile::Ring ? 2 : 1;
  void findRows(typename L::Int rows, IndexRange visible, RowBlock<Isa>& block) const {
    const Disc& disc = blics_.disc;
    const Float squares = disc.rowSquares<Isa>(rows);
    L::store(block.row, squares);
    const auto near = disc.nearSteps<Isa>(squares, visible, disc.radius());
    if constexpr (kProfile == BlicsProfile::Disc) {
      block.setStretch(0, near);
    } else {
      // Inside the ring nothing is plotted; the margin keeps pixels whose rounding could matter.
      const float clear = (blics_.inner - 0.001f) * disc.radius();
      const auto hole = disc.clearSteps<Isa>(squares, visible, clear);
      block.setStretch(0, {near.begin, hole.begin < near.end ? hole.begin : near.end});
      block.setStretch(1, {hole.end, near.end});
    }
  }

  Shaded<Isa> shade(typename L::Int steps, Float rowSquares) const {
    const float radius = blics_.disc.radius();
    const Float fx = L::toFloat(steps) - blics_.disc.fractionX();
    const Float distance = L::squareRoot(fx * fx + rowSquares);
    const Float t = distance / radius;
    const Float k = L::clampUnit(shape(t) * blics_.value) * blics_.fullScale;
    const Float value = distance < radius ? k : Float{};
    if constexpr (kRainbow) return {value, rainbowPens(t)};
    return {value, pen_.template inAllLanes<Isa>()};
  }

 private:
  Float shape(Float t) const {
    const auto outside = t >= blics_.outer;
    if constexpr (kProfile == BlicsProfile::Disc) {
      const Float off = L::absolute(blics_.outer - t);
      // Most lanes lie on the same side of the rim, and one side is enough then.
      const auto toCentre = [&] { return L::squareRoot(L::minimum(off * 0.7f, L::splat(1.0f))); };
      if (!L::any(outside)) return 1.0f - toCentre();
      const Float toEdge = off / blics_.rim;
      if (!L::any(!outside)) return 1.0f - toEdge;
      return 1.0f - (outside ? toEdge : toCentre());
    } else {
      const Float from = outside ? L::splat(blics_.outer) : L::splat(blics_.inner);
      const Float share = (t - from) / blics_.ring;
      const Float j = outside ? share : 1.0f - share;
      return 1.0f - j * j;
    }
  }

  Pens<Isa> rainbowPens(Float t) const {
    const Float p =
        kProfile == BlicsProfile::Ring ? L::absolute(t - blics_.inner) * 10.0f + 1.0f : t * 5.0f;
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(blics_.rainbowShift);
    const Float saturation =
        L::clamp(static_cast<float>(base_.saturation) + 2.0f * p * strength, 100.0f, 240.0f);
    const Float lightness =
        L::maximum(static_cast<float>(base_.lightness) - q * strength, L::splat(120.0f));
    return recoloured<Isa>(L::splat(static_cast<float>(base_.hue)), q * blics_.rainbowShift,
                           lightness, saturation);
  }

  const Blics& blics_;
  Pen pen_;
  Hls base_;
};

template <class Isa, BlicsProfile kProfile>
void paintBlicsProfile(Drawing& drawing, Blics& blics) {
  blics.disc.placeOn(drawing.layer, drawing.grid);
  if (drawing.grid.empty()) return;
  if (drawing.state.rainbowOn && blics.rainbowShift != 0.0f) {
    paintSprite<Isa>(drawing, BlicsShader<Isa, kProfile, true>(blics));
  } else {
    constexpr std::int32_t kLeastSaturation = 100;
    if (drawing.state.rainbowOn) blics.color = recolouredEvenly(blics.color, kLeastSaturation);
    paintSprite<Isa>(drawing, BlicsShader<Isa, kProfile, false>(blics));
  }
}

template <class Isa>
void paintBlicsStar(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                    BlicsProfile profile, float ringWidth) {
  constexpr float kLeastRingWidth = 0.03f;
  const std::int32_t n = truncToInt(size / 2.0f);
  if (n <= 0 || value <= 0.0f) return;
  DrawingState& state = drawing.state;
  Blics blics{Disc(x, y, n), color, value, drawing.layer.fullScale(), state.rainbowShift, 0.0f,
              0.0f,          0.0f,  0.0f};
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
