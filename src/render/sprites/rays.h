// The fan of polygonal rays.
#pragma once

#include <algorithm>
#include <cmath>

#include "core/image_view.h"
#include "core/numbers.h"
#include "render/raster/recolor.h"
#include "render/raster/runs.h"
#include "render/simd/lanes.h"
#include "render/sprites/ray_rows.h"
#include "render/sprites/ray_shape.h"
#include "render/sprites/specs.h"

namespace brisel {

/// Shades the pixels of a ray, whose steps are the frame's columns and whose rows are the frame's.
template <class Isa, bool kRainbow>
class RayShader {
  using L = Lanes<Isa>;
  using Float = typename L::Float;

 public:
  RayShader(const RaySpec& spec, float fullScale)
      : pen_(spec.color),
        value_(spec.value),
        fullScale_(fullScale),
        rainbowShift_(spec.rainbowShift) {
    if (kRainbow) base_ = rgbToHls(spec.color);
  }

  /// The ray to shade from now on, which is borrowed.
  void setRay(const RayShape& ray) { ray_ = &ray; }

  Shaded<Isa> shade(typename L::Int columns, Float y) const {
    return shade(L::toFloat(columns), y, L::splat(1.0f));
  }

  Shaded<Isa> shade(Float x, Float y, Float coverage) const {
    const Float u = distance(ray_->base, x, y) / ray_->length;
    const Float v = distance(ray_->across, x, y) / ray_->baseHalfWidth;
    const Float shaped = L::clampUnit(shape(ray_->shading, u, v) * value_);
    const Float value = shaped * coverage * fullScale_;
    if constexpr (kRainbow) {
      if (L::any(value > 0.0f)) return {value, rainbowPens(u)};
    }
    return {value, pen_.template inAllLanes<Isa>()};
  }

 private:
  static Float distance(const RayLine& line, Float x, Float y) {
    return L::absolute(line.a * x + line.b * y + line.c) / line.norm;
  }

  static Float shape(RayShading shading, Float u, Float v) {
    switch (shading) {
      case RayShading::Soft: {
        const Float spread = v * (1.0f + 0.9f * u);
        const Float across = 1.0f - L::minimum(spread * spread, L::splat(1.0f));
        const Float along = 1.0f - 0.8f * u;
        return across * across * (along * along);
      }
      case RayShading::Axis: {
        const Float along = 1.0f - 0.8f * u;
        const Float t = along * along;
        return t * L::squareRoot(v / 2.0f + 1.25f * t);
      }
      default: {
        const Float along = 1.0f - u;
        const Float t = along * along;
        return L::clampUnit((v * v + L::maximum(t * t - 0.1f, Float{})) * t);
      }
    }
  }

  Pens<Isa> rainbowPens(Float u) const {
    const float strength = std::fabs(rainbowShift_);
    const float start = 0.5f - std::min(0.5f, strength / 5000.0f);
    const Float p = L::maximum(u - start, Float{});
    const Float square = p * p;
    const float gain = ray_->shading == RayShading::Axis ? 5.0f : 2.0f;
    const Float saturation = static_cast<float>(base_.saturation) + gain * p * strength;
    Float loss;
    switch (ray_->shading) {
      case RayShading::Soft:
        loss = 4.0f * square * strength;
        break;
      case RayShading::Axis:
        loss = 0.5f * square * strength;
        break;
      default:
        loss = 4.0f * p * strength;
        break;
    }
    const Float lightness = static_cast<float>(base_.lightness) - loss;
    const Float turn = ray_->shading == RayShading::Side ? p : square;
    return recolored<Isa>({static_cast<float>(base_.hue) + turn * rainbowShift_,
                           L::maximum(lightness, L::splat(120.0f)),
                           L::minimum(saturation, L::splat(240.0f))});
  }

  Pen pen_;
  float value_;
  float fullScale_;
  float rainbowShift_;
  Hls base_;
  const RayShape* ray_ = nullptr;
};

/// Shades the pixels of a ray and of the bands around it. Their rows are numbers in the spans.
template <class Isa, class FullShader>
class CoveredRayShader {
  using L = Lanes<Isa>;

 public:
  CoveredRayShader(const FullShader& shader, const RayEdges& edges, const RaySpans<Isa>& spans)
      : shader_(shader), edges_(edges), spans_(spans) {}

  /// The frame's row that row 0 of the spans is; the others lie above it.
  void setLowestRow(std::int32_t row) { lowestRow_ = static_cast<float>(row); }

  Shaded<Isa> shade(typename L::Int columns, typename L::Float rows) const {
    const auto row = L::toInt(rows);
    const auto of = [&](const std::int32_t* table) { return L::picked(table, row); };
    const auto x = L::toFloat(columns);
    const auto y = lowestRow_ - rows;
    const auto isLeft = columns < of(spans_.left.end);
    const auto isBand = isLeft | (columns >= of(spans_.right.begin));
    const auto isFull = (columns >= of(spans_.full.begin)) & (columns < of(spans_.full.end));
    const auto own = isLeft ? of(spans_.leftEdge) : of(spans_.rightEdge);
    const auto coverage = isBand ? bandCoverage<Isa>(edges_, own, x, y) : L::splat(0.0f);
    return shader_.shade(x, y, isFull ? L::splat(1.0f) : coverage);
  }

 private:
  const FullShader& shader_;
  const RayEdges& edges_;
  const RaySpans<Isa>& spans_;
  float lowestRow_ = 0.0f;
};

/// Whether the ray cannot touch the frame's columns. A ray that ends less than a pixel above the
/// frame is painted on row 0 with its edges extended to that row, so its box does not count.
[[gnu::always_inline]] inline bool missesColumns(const RayShape& ray,
                                                 const MutableImageView& image) {
  constexpr float kFarthestBand = 8.0f;
  if (ray.edges.startY[0] < 0.0f) return false;
  return ray.xMax < -kFarthestBand || ray.xMin > static_cast<float>(image.width) + kFarthestBand;
}

template <BlendRule kRule, class Pixels, class Isa, bool kSmooth, class Shader>
[[gnu::flatten]] void paintRay(const MutableImageView image, IndexRange rowRange,
                               const RayShape& ray, const Shader& shader) {
  const std::int32_t top = std::min(truncToInt(ray.edges.startY[0]), rowRange.end - 1);
  if (top < rowRange.begin || !(static_cast<float>(top) > ray.yMin)) return;
  const std::int32_t last =
      std::max(ray.yMin < 0.0f ? 0 : truncToInt(ray.yMin) + 1, rowRange.begin);
  constexpr std::ptrdiff_t kBytes = Pixels::kBytes;
  RunPieces<Isa> pieces[2];
  const RayRows<Isa, kSmooth> rows(ray, image.width);
  RaySpans<Isa> spans;
  RunPlotter<kRule, Pixels, Isa, Shader> full(shader, pieces[0]);
  CoveredRayShader<Isa, Shader> coveredShader(shader, ray.edges, spans);
  RunPlotter<kRule, Pixels, Isa, CoveredRayShader<Isa, Shader>> covered(coveredShader, pieces[1]);
  std::uint8_t* pixels = image.at(0, top);
  for (std::int32_t first = top; first >= last; first -= spans.kRows) {
    rows.find(first - Lanes<Isa>::steps(0), spans);
    coveredShader.setLowestRow(first);
    const std::int32_t count = std::min(first - last + 1, spans.kRows);
    for (std::int32_t i = 0; i < count; ++i, pixels -= image.rowBytes) {
      const auto at = [&](std::int32_t column) { return pixels + column * kBytes; };
      const std::int32_t begin = spans.full.begin[i];
      const auto row = static_cast<float>(first - i);
      if constexpr (!kSmooth) {
        full.plot(at(begin), begin, spans.full.count(i), row);
      } else {
        const auto plot = [&](std::int32_t from, std::int32_t to) {
          covered.plotShort(at(from), from, to - from, static_cast<float>(i));
        };
        if (spans.full.count(i) < Lanes<Isa>::kCount) {
          plot(spans.all.begin[i], spans.all.end[i]);
        } else {
          plot(spans.all.begin[i], begin);
          const auto whole = full.plotWhole(at(begin), begin, spans.full.count(i), row);
          plot(begin + whole, spans.all.end[i]);
        }
      }
    }
    covered.finish();
  }
  full.finish();
}

template <class Isa>
void paintRays(const MutableImageView& image, IndexRange rows, const RaySpec& rays,
               const RayShape* built) {
  const auto paint = [&]<bool kSmooth, bool kRainbow>() {
    RayShader<Isa, kRainbow> shader(rays, image.fullScale());
    RayShape own;
    withRule<Isa>(rays.rule, image.isDeep(), [&]<BlendRule kRule, class Pixels>() {
      for (RayAngles angles(rays); !angles.atEnd(); angles.next()) {
        if (built == nullptr) buildRay(own, rays, angles.degrees());
        const RayShape& ray = built != nullptr ? built[angles.index()] : own;
        if (ray.edgeCount == 0 || missesColumns(ray, image)) continue;
        shader.setRay(ray);
        paintRay<kRule, Pixels, Isa, kSmooth>(image, rows, ray, shader);
      }
    });
  };
  if (rays.isSmooth) {
    rays.isRecolored ? paint.template operator()<true, true>()
                     : paint.template operator()<true, false>();
  } else {
    rays.isRecolored ? paint.template operator()<false, true>()
                     : paint.template operator()<false, false>();
  }
}

}  // namespace brisel
