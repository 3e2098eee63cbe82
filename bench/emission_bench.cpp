// Births on emitters whose points have to be looked up: 10,000 stars on a long traced contour and
// on mask outlines of growing length. Time a star should hardly grow with the outline.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>

#include "engine/contour_emitter.h"
#include "engine/emission.h"
#include "engine/mask_outline.h"
#include "tests/contour/mask_shapes.h"

namespace {

constexpr int kStars = 10000;

brisel::RenderSettings settingsFor(brisel::StandardPath path) {
  brisel::RenderSettings settings;
  settings.frameWidth = 1920;
  settings.frameHeight = 1080;
  settings.standardPath = path;
  settings.size = 20.0f;
  settings.timeLife = 35.0f;
  return settings;
}

void emit(benchmark::State& state, const brisel::RenderSettings& settings,
          const brisel::Emitter& emitter) {
  brisel::RandomGenerator random;
  brisel::Particle star{};
  for ([[maybe_unused]] auto _ : state) {
    for (int i = 0; i < kStars; ++i) {
      initialiseParticle({settings, emitter, random, 0.0f}, star, 0.0f);
      benchmark::DoNotOptimize(star);
    }
  }
  state.SetItemsProcessed(state.iterations() * kStars);
}

void onContour(benchmark::State& state) {
  const auto side = static_cast<int>(state.range(0));
  const reference::Mask mask = reference::notchedSpiral(side * 16 / 9, side);
  const brisel::ContourEmitter contour = brisel::buildContourEmitter(
      {mask.cells.data(), mask.width, mask.height, mask.width, brisel::PixelFormat::Mask8}, 1.0f);
  brisel::Emitter emitter;
  emitter.contour = &contour;
  emit(state, settingsFor(brisel::StandardPath::ContourAlphaChannel), emitter);
  state.counters["edges"] = static_cast<double>(contour.edges.size());
}

/// A wavy ring of `state.range(0)` vertices.
void onMask(benchmark::State& state) {
  std::vector<brisel::MaskVertex> vertices;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    const float angle = 6.2831853f * static_cast<float>(i) / static_cast<float>(state.range(0));
    const float radius = i % 2 == 0 ? 400.0f : 420.0f;
    const brisel::PointF point{960.0f + radius * std::cos(angle),
                               540.0f + radius * std::sin(angle)};
    vertices.push_back({point, point, point});
  }
  const brisel::MaskOutline outline = brisel::buildMaskOutline(vertices, false, false);
  brisel::Emitter emitter;
  emitter.maskOutline = &outline;
  emit(state, settingsFor(brisel::StandardPath::Bezier), emitter);
}

BENCHMARK(onContour)->Name("emit_on_contour")->Arg(270)->Arg(1080)->Unit(benchmark::kMillisecond);
BENCHMARK(onMask)
    ->Name("emit_on_mask")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
