// The frei0r filter at 1920x1080 with its defaults: what it takes beyond the effect itself, and
// beside the glow of the frei0r collection (Debian's frei0r-plugins), in processor time.
#include <dlfcn.h>

#include <benchmark/benchmark.h>

extern "C" {
#include <frei0r.h>
}

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "core/geometry.h"
#include "effect_frames.h"
#include "rates.h"

namespace {

constexpr brisel::FrameSize kFrame{1920, 1080};
constexpr double kRate = 25;

using Pixels = std::vector<std::uint32_t>;

Pixels clip() {
  Pixels pixels(std::size_t{1920} * 1080);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    pixels[i] = 0xFF000000u | static_cast<std::uint32_t>(i) * 2654435761u >> 9;
  }
  return pixels;
}

void renderByEffect(benchmark::State& state) {
  const Pixels input = clip();
  bench::EffectFrames effect({reinterpret_cast<const std::uint8_t*>(input.data()), kFrame.width,
                              kFrame.height, std::ptrdiff_t{4} * kFrame.width});
  int frame = 0;
  for ([[maybe_unused]] auto _ : state) {
    effect.render(frame);
    frame = (frame + 1) % bench::kClipFrames;
  }
}

void renderByFilter(benchmark::State& state, const char* path) {
  void* library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return state.SkipWithError(dlerror());
  const auto function = [library]<typename Function>(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(library, name));
  };
  const auto update = function(&f0r_update, "f0r_update");
  function(&f0r_init, "f0r_init")();
  const Pixels input = clip();
  Pixels output(input.size());
  f0r_instance_t filter = function(&f0r_construct, "f0r_construct")(1920, 1080);
  int frame = 0;
  for ([[maybe_unused]] auto _ : state) {
    update(filter, frame / kRate, input.data(), output.data());
    frame = (frame + 1) % bench::kClipFrames;
  }
  function(&f0r_destruct, "f0r_destruct")(filter);
  function(&f0r_deinit, "f0r_deinit")();
  dlclose(library);
}

void print(const bench::Rates& rates) {
  const auto milliseconds = [&](const char* name) { return 1000 / rates.of(name); };
  std::printf(
      "A frame of 1920x1080 with the defaults takes the frei0r filter %.1f ms, of which the "
      "effect takes %.1f: %.1f ms are overhead.\n",
      milliseconds("filter"), milliseconds("effect"),
      milliseconds("filter") - milliseconds("effect"));
  if (rates.of("glow") > 0) {
    std::printf("The collection's glow takes %.1f ms: the filter takes %.2f times as long.\n",
                milliseconds("glow"), rates.ratio("glow", "filter"));
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RegisterBenchmark("effect", renderByEffect);
  benchmark::RegisterBenchmark("filter", renderByFilter, BRISEL_FILTER_PATH);
  benchmark::RegisterBenchmark("glow", renderByFilter, "/usr/lib/frei0r-1/glow.so");
  bench::Rates rates;
  benchmark::RunSpecifiedBenchmarks(&rates);
  print(rates);
  return 0;
}
