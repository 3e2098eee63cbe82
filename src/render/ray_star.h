// The fan of polygonal rays.
#pragma once

#include <algorithm>
#include <cmath>
#include <iterator>

#include "render/hls.h"
#include "render/ray_shader.h"
#include "render/ray_shape.h"
#include "render/ray_span.h"
#include "render/run_plotter.h"
#include "render/sprites.h"

namespace brisel {

/// Plots the bands on one side of a ray.
template <BlendRule kRule, class Pixels, class Isa, class FullShader>
class RayBandPlotter {
 public:
  RayBandPlotter(const FullShader& ray, const EdgeBand* bands, RunPieces<Isa>& pieces)
      : bands_(bands), shader_(ray), plotter_(shader_, pieces) {}

  void plot(std::int32_t edge, std::uint8_t* pixels, std::int32_t column, std::int32_t count,
            float row) {
    if (edge != edge_) {
      plotter_.finish();
      shader_.setBand(bands_[edge]);
      edge_ = edge;
    }
    plotter_.plotShort(pixels, column, count, row);
  }
  void finish() { plotter_.finish(); }

 private:
  const EdgeBand* bands_;
  RayBandShader<Isa, FullShader> shader_;
  RunPlotter<kRule, Pixels, Isa, RayBandShader<Isa, FullShader>> plotter_;
  std::int32_t edge_ = -1;
};

/// Whether the ray cannot touch the frame's columns. A ray that ends less than a pixel above the
/// frame is drawn on row 0 with its edges prolonged, so its box says nothing.
[[gnu::always_inline]] inline bool liesBeside(const RayShape& ray, const MutableImageView& layer) {
  constexpr float kFarthestBand = 8.0f;
  if (ray.edges[0].start.y < 0.0f) return false;
  return ray.xMax < -kFarthestBand || ray.xMin > static_cast<float>(layer.width) + kFarthestBand;
}

template <BlendRule kRule, class Pixels, class Isa, bool kHighQuality, class Shader>
[[gnu::flatten]] void paintRay(const MutableImageView layer, const RayShape& ray,
                               const Shader& shader) {
  const std::int32_t top = std::min(truncToInt(ray.edges[0].start.y), layer.height - 1);
  if (top < 0 || !(static_cast<float>(top) > ray.yMin)) return;
  const std::int32_t last = ray.yMin < 0.0f ? 0 : truncToInt(ray.yMin) + 1;
  constexpr std::ptrdiff_t kBytes = Pixels::kBytes;
  EdgeBand bands[std::size(ray.edges)];
  if (kHighQuality) {
    for (std::int32_t i = 0; i < ray.edgeCount; ++i) bands[i].setEdge(ray.edges[i]);
  }
  RunPieces<Isa> pieces[3];
  RunPlotter<kRule, Pixels, Isa, Shader> full(shader, pieces[0]);
  RayBandPlotter<kRule, Pixels, Isa, Shader> left(shader, bands, pieces[1]),
      right(shader, bands, pieces[2]);
  const RayRows<Isa> rows(ray, kHighQuality ? bands : nullptr, layer.width);
  RaySpans<Isa> spans;
  std::uint8_t* pixels = layer.at(0, top);
  for (std::int32_t first = top; first >= last; first -= spans.kRows) {
    rows.find(first - Lanes<Isa>::steps(0), spans);
    const std::int32_t count = std::min(first - last + 1, spans.kRows);
    for (std::int32_t i = 0; i < count; ++i, pixels -= layer.rowBytes) {
      const float row = static_cast<float>(first - i);
      const auto at = [&](const ColumnSpans<Isa>& of) { return pixels + of.begin[i] * kBytes; };
      full.plot(at(spans.full), spans.full.begin[i], spans.full.count(i), row);
      if constexpr (kHighQuality) {
        left.plot(spans.leftEdge[i], at(spans.left), spans.left.begin[i], spans.left.count(i), row);
        right.plot(spans.rightEdge[i], at(spans.right), spans.right.begin[i], spans.right.count(i),
                   row);
      }
    }
  }
  full.finish();
  left.finish();
  right.finish();
}

/// Whether no ray of a star can touch the frame, whatever its angle.
[[gnu::always_inline]] inline bool allLieOutside(const MutableImageView& layer, float x, float y,
                                                 float size, float width) {
  // No corner and no band lies farther from the centre; the first corner of each ray is not above
  // it, so that only stars above the frame have rays that are prolonged to row 0.
  const float reach = 1.01f * (size + 1.5f * std::fabs(width)) + 16.0f;
  return y + reach < 0.0f || y - reach > static_cast<float>(layer.height) ||
         (y > 1.0f && (x + reach < 0.0f || x - reach > static_cast<float>(layer.width)));
}

template <class Isa>
void paintRayStar(Drawing& drawing, StarType type, float x, float y, float size, float width,
                  float angleDegrees, float rays, Rgb color, float value) {
  if (!(rays > 0.0f) || !(size > 0.0f)) return;
  if (type < StarType::Type1 || type > StarType::Type5) return;
  const MutableImageView& layer = drawing.layer;
  if (allLieOutside(layer, x, y, size, width)) return;
  const float shift = drawing.state.rainbowShift;
  bool rainbowOn = drawing.state.rainbowOn;
  // Distances along much shorter rays overflow.
  constexpr float kShortest = 1e-6f;
  if (rainbowOn && shift == 0.0f && size > kShortest) {
    color = recolouredEvenly(color, 0);
    rainbowOn = false;
  }
  const RayLight light{color, value, layer.fullScale(), shift};
  const auto paint = [&]<bool kHighQuality, bool kRainbow>() {
    RayShader<Isa, kRainbow> shader(light);
    RayShape ray;
    const float step = 360.0f / rays;
    float angle = angleDegrees;
    withRule<Isa>(drawing.blendRule, layer.isDeep(), [&]<BlendRule kRule, class Pixels>() {
      for (std::int32_t i = 0; static_cast<float>(i) < rays; ++i, angle += step) {
        if (buildRay(ray, type, {x, y}, size, width, angle, drawing.state.currentRandomFactor) &&
            !liesBeside(ray, layer)) {
          shader.setRay(ray);
          paintRay<kRule, Pixels, Isa, kHighQuality>(layer, ray, shader);
        }
      }
    });
  };
  if (drawing.settings.highQuality) {
    rainbowOn ? paint.template operator()<true, true>() : paint.template operator()<true, false>();
  } else {
    rainbowOn ? paint.template operator()<false, true>()
              : paint.template operator()<false, false>();
  }
}

}  // namespace brisel
