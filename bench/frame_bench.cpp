// Whole frames through the module's entry point, and one simulation step of 30,000 stars beside
// the drawing of them.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "engine/simulation.h"
#include "hostkit/module.h"
#include "hostkit/session.h"
#include "render/frame.h"

namespace {

constexpr int kWarmUpFrames = 60;

struct Hosted {
  hostkit::Module module = hostkit::Module::load(BRISEL_MODULE_PATH);
  hostkit::Session session{module};

  explicit Hosted(int width, int height) {
    session.open();
    session.parameters().resetToDefaults(width, height);
  }
  PF_ParamIndex index(const char* label) { return session.parameters().find(label)->index; }
  void number(const char* label, double value) {
    session.parameters().setNumber(index(label), value);
  }
  void item(const char* label, int item) { session.parameters().setItem(index(label), item); }
};

/// Renders on from a frame at which the population is full.
void runFrames(benchmark::State& state, Hosted& hosted, hostkit::Depth depth) {
  const auto width = static_cast<int>(state.range(0));
  const auto height = static_cast<int>(state.range(1));
  hostkit::World input(width, height, depth);
  hostkit::World output(width, height, depth);
  hostkit::RenderRequest request;
  for (; request.frame < kWarmUpFrames; ++request.frame) {
    hosted.session.render(input, output, request);
  }
  for (auto _ : state) {
    hosted.session.render(input, output, request);
    ++request.frame;
  }
  state.SetItemsProcessed(state.iterations());
}

void defaultParameters(benchmark::State& state, hostkit::Depth depth) {
  Hosted hosted(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  runFrames(state, hosted, depth);
}

/// 500 glows of size 25 with halo Normal and blink Rainbow.
void heavyScene(benchmark::State& state, hostkit::Depth depth) {
  Hosted hosted(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  hosted.item("Type", 9);
  hosted.number("Size", 25);
  hosted.item("Type of halo", 3);
  hosted.item("Type of blink", 4);
  hosted.number("Maximum number of stars", 500);
  hosted.number("Intensity", 50);
  hosted.number("Time life", 100);
  runFrames(state, hosted, depth);
}

void registerFrames(const char* name, void (*run)(benchmark::State&, hostkit::Depth)) {
  for (const hostkit::Depth depth : {hostkit::Depth::k8, hostkit::Depth::k16}) {
    const std::string full = std::string(name) + (depth == hostkit::Depth::k8 ? "/8bit" : "/16bit");
    benchmark::RegisterBenchmark(full.c_str(), [=](benchmark::State& s) { run(s, depth); })
        ->Args({1920, 1080})
        ->Unit(benchmark::kMillisecond);
  }
}

/// 30,000 long-lived stars spread over a 1920x1080 frame, as Type2 stars of size 5.
struct Crowd {
  static constexpr std::int32_t kStars = 30000;
  brisel::RenderSettings settings;
  brisel::RandomGenerator random;
  std::vector<brisel::Particle> stars{kStars};
  std::vector<std::uint8_t> pixels;
  brisel::StarPopulation population;
  brisel::Emitter emitter;

  Crowd() : pixels(std::size_t{1920} * 1080 * 4) {
    settings.frameWidth = 1920;
    settings.frameHeight = 1080;
    settings.outputPixels = pixels.data();
    settings.outputRowStride = 1920 * 4;
    settings.highQuality = true;
    settings.standardPath = brisel::StandardPath::Line;
    settings.start = {0.0f, 540.0f};
    settings.controlEnd = {1919.0f, 540.0f};
    settings.intensity = static_cast<float>(kStars);
    settings.maximumNumberOfStars = kStars;
    settings.initialSpeed = 5.0f;
    settings.timeLife = 1e6f;
    settings.type = brisel::StarType::Type2;
    settings.size = 5.0f / 200.0f * 1920.0f;
    settings.width = 50.0f / 1000.0f * settings.size;
    settings.raysCount = 4;
    settings.value = 0.5f;
    settings.colorOfParticles = {255, 255, 255};
    population.stars = stars.data();
    population.capacity = kStars;
    emitter = prepareEmitter(settings);
    simulationStep(settings, emitter, random, population);
  }
};

void simulateCrowd(benchmark::State& state) {
  Crowd crowd;
  for (auto _ : state) {
    simulationStep(crowd.settings, crowd.emitter, crowd.random, crowd.population);
    benchmark::ClobberMemory();
  }
}

void drawCrowd(benchmark::State& state) {
  Crowd crowd;
  brisel::DrawingState drawingState;
  brisel::Drawing drawing{crowd.settings,
                          crowd.random,
                          drawingState,
                          outputLayer(crowd.settings),
                          brisel::BlendRule::Over};
  for (auto _ : state) {
    drawAllStars(drawing, crowd.population.stars, crowd.population.starCount);
    benchmark::ClobberMemory();
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  registerFrames("default_parameters", defaultParameters);
  registerFrames("heavy_scene", heavyScene);
  benchmark::RegisterBenchmark("simulate_30000_stars", simulateCrowd)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("draw_30000_stars", drawCrowd)->Unit(benchmark::kMillisecond);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
