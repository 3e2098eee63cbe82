// Blics: a disc with a bright rim, or a ring.
#pragma once

#include <cmath>

#include "render/raster/recolor.h"
#include "render/raster/runs.h"
#include "render/simd/lanes.h"
#include "render/sprites/disc.h"
#include "render/sprites/specs.h"

namespace brisel {

/// Distances are shares of the radius.
template <class Isa, BlicsProfile kProfile, bool kRainbow>
class BlicsShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  BlicsShader(const BlicsSpec& spec, float fullScale)
      : disc_(spec.center, spec.radius),
        pen_(spec.color),
        value_(spec.value),
        fullScale_(fullScale),
        rainbowShift_(spec.rainbowShift),
        rim_(spec.rim),
        outer_(1.0f - spec.rim),
        inner_(outer_ - spec.rim) {
    if (kRainbow) base_ = rgbToHls(spec.color);
  }

  static constexpr int kStretches = kProfile == BlicsProfile::Ring ? 2 : 1;
  static constexpr int kNarrowShare = kRainbow ? 4 : 1;
  Float rowValues(typename L::Int rows) const { return disc_.rowSquares<Isa>(rows); }
  void findStretches(Float rowSquares, IndexRange visible, RowBlock<Isa>& block) const {
    const auto near = disc_.nearSteps<Isa>(rowSquares, visible, disc_.radius());
    if constexpr (kProfile == BlicsProfile::Disc) {
      block.setStretch(0, near);
    } else {
      // Inside the ring nothing is plotted; the margin keeps pixels whose rounding could matter.
      const float clear = (inner_ - 0.001f) * disc_.radius();
      const auto hole = disc_.clearSteps<Isa>(rowSquares, visible, clear);
      block.setStretch(0, {near.begin, hole.begin < near.end ? hole.begin : near.end});
      block.setStretch(1, {hole.end, near.end});
    }
  }

  Shaded<Isa> shade(typename L::Int steps, Float rowSquares) const requires(!kRainbow) {
    const Float distance = disc_.distances<Isa>(steps, rowSquares);
    return {plotValue(distance, distance / disc_.radius()), pen_.template inAllLanes<Isa>()};
  }

  TurnedShade<Isa> prepare(typename L::Int steps, Float rowSquares) const requires kRainbow {
    const Float distance = disc_.distances<Isa>(steps, rowSquares);
    const Float t = distance / disc_.radius();
    return {plotValue(distance, t), turned(t)};
  }
  Shaded<Isa> shade(const TurnedShade<Isa>& prepared) const {
    return {prepared.value, recolored<Isa>(prepared.color)};
  }

 private:
  Float plotValue(Float distance, Float t) const {
    const Float k = L::clampUnit(shape(t) * value_) * fullScale_;
    return distance < disc_.radius() ? k : Float{};
  }

  Float shape(Float t) const {
    const auto outside = t >= outer_;
    if constexpr (kProfile == BlicsProfile::Disc) {
      const Float off = L::absolute(outer_ - t);
      // Most lanes lie on the same side of the rim, and one side is enough then.
      const auto toCenter = [&] { return L::squareRoot(L::minimum(off * 0.7f, L::splat(1.0f))); };
      const Float outer = L::splat(outer_);
      if (!L::anyNotBelow(t, outer)) return 1.0f - toCenter();
      const Float toEdge = off / rim_;
      if (!L::anyBelow(t, outer)) return 1.0f - toEdge;
      return 1.0f - (outside ? toEdge : toCenter());
    } else {
      const Float from = outside ? L::splat(outer_) : L::splat(inner_);
      const Float share = (t - from) / rim_;
      const Float j = outside ? share : 1.0f - share;
      return 1.0f - j * j;
    }
  }

  Turned<Isa> turned(Float t) const {
    const Float p =
        kProfile == BlicsProfile::Ring ? L::absolute(t - inner_) * 10.0f + 1.0f : t * 5.0f;
    const Float q = (p / 4.0f) * (p / 4.0f);
    const float strength = std::fabs(rainbowShift_);
    const Float saturation =
        L::clamp(static_cast<float>(base_.saturation) + 2.0f * p * strength, 100.0f, 240.0f);
    const Float lightness =
        L::maximum(static_cast<float>(base_.lightness) - q * strength, L::splat(120.0f));
    return {static_cast<float>(base_.hue) + q * rainbowShift_, lightness, saturation};
  }

  Disc disc_;
  Pen pen_;
  float value_;
  float fullScale_;
  float rainbowShift_;
  float rim_;
  float outer_;  // where the light is brightest
  float inner_;  // where a ring begins
  Hls base_;
};

template <class Isa>
void paintBlics(const MutableImageView& image, const PixelGrid& grid, const BlicsSpec& blics) {
  const auto paint = [&]<BlicsProfile kProfile, bool kRainbow>() {
    const BlicsShader<Isa, kProfile, kRainbow> shader(blics, image.fullScale());
    paintSprite<Isa>(image, grid, blics.rule, shader);
  };
  const bool isRecolored = blics.rainbowShift != 0.0f;
  if (blics.profile == BlicsProfile::Disc) {
    isRecolored ? paint.template operator()<BlicsProfile::Disc, true>()
                : paint.template operator()<BlicsProfile::Disc, false>();
  } else {
    isRecolored ? paint.template operator()<BlicsProfile::Ring, true>()
                : paint.template operator()<BlicsProfile::Ring, false>();
  }
}

}  // namespace brisel
