// Whole frames through the module's entry point, with the plain kernels and those chosen; how their
// cost grows; one simulation step of 30,000 stars and the painting of them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "effect/parameters.h"
#include "engine/simulation.h"
#include "hostkit/module.h"
#include "hostkit/session.h"
#include "instructions.h"
#include "rates.h"
#include "render/painter.h"
#include "render/stars/compose.h"
#include "scene.h"

namespace {

constexpr int kWarmUpFrames = 60;  // after which populations are full

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
void runFrames(benchmark::State& state, Hosted& hosted, int width, int height, hostkit::Depth depth,
               int warmUpFrames) {
  hostkit::World input(width, height, depth);
  hostkit::World output(width, height, depth);
  hostkit::RenderRequest request;
  for (; request.frame < warmUpFrames; ++request.frame) {
    hosted.session.render(input, output, request);
  }
  for ([[maybe_unused]] auto _ : state) {
    hosted.session.render(input, output, request);
    ++request.frame;
  }
}

void setHeavyScene(Hosted& hosted) {
  hostkit::ParameterSet& parameters = hosted.session.parameters();
  for (const auto& [index, number] : bench::kHeavyScene) {
    if (brisel::parameterSpec(index).kind == brisel::ParamKind::Popup) {
      parameters.setItem(index, static_cast<int>(number));
    } else {
      parameters.setNumber(index, number);
    }
  }
}

/// As many long-lived glows as asked for, all over the frame.
void setCrowd(Hosted& hosted, int stars, double size) {
  hosted.item("Standard path", 7);
  hosted.item("Type", 9);
  hosted.number("Size", size);
  hosted.number("Maximum number of stars", stars);
  hosted.number("Intensity", std::min(stars, 10000));
  hosted.number("Time life", 1000);
}

/// Whole frames with one instruction set.
void addFrames(const std::string& set, const std::string& name, int width, int height,
               hostkit::Depth depth, const std::function<void(Hosted&)>& prepare,
               int warmUpFrames) {
  const auto run = [=](benchmark::State& state) {
    Hosted hosted(width, height);
    hosted.session.usePainting(1, set);
    prepare(hosted);
    runFrames(state, hosted, width, height, depth, warmUpFrames);
  };
  benchmark::RegisterBenchmark((set + "/" + name).c_str(), run);
}

struct Frame {
  std::string name;
  int width, height;
  hostkit::Depth depth;
  std::function<void(Hosted&)> prepare;
  int warmUpFrames = kWarmUpFrames;
};

/// What is set against the plain kernels.
const std::vector<Frame> kScenes = {
    {"default_parameters/8bit", 1920, 1080, hostkit::Depth::Bits8, [](Hosted&) {}},
    {"default_parameters/16bit", 1920, 1080, hostkit::Depth::Bits16, [](Hosted&) {}},
    {"heavy_scene/8bit", 1920, 1080, hostkit::Depth::Bits8, setHeavyScene, 3},
    {"heavy_scene/16bit", 1920, 1080, hostkit::Depth::Bits16, setHeavyScene, 3},
};

/// How cost grows with the number of stars, their size and the frame.
std::vector<Frame> growth() {
  std::vector<Frame> frames;
  const auto add = [&](const std::string& name, int width, int height, int stars, double size) {
    frames.push_back({name, width, height, hostkit::Depth::Bits8,
                      [=](Hosted& hosted) { setCrowd(hosted, stars, size); }, 3});
  };
  for (const int stars : {100, 1000, 10000, 30000}) {
    add("stars/" + std::to_string(stars), 1920, 1080, stars, 2);
  }
  for (const int size : {1, 10, 100, 1000})
    add("size/" + std::to_string(size), 1920, 1080, 10, size);
  for (const int height : {270, 540, 1080, 2160, 4320}) {
    add("frame/" + std::to_string(height * 16 / 9) + "x" + std::to_string(height), height * 16 / 9,
        height, 500, 5);
  }
  return frames;
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
  for ([[maybe_unused]] auto _ : state) {
    simulationStep(crowd.settings, crowd.emitter, crowd.random, crowd.population);
    benchmark::ClobberMemory();
  }
}

void paintCrowd(benchmark::State& state, const brisel::Kernels& kernels) {
  Crowd crowd;
  brisel::SpriteState sprites;
  const brisel::MutableImageView output{crowd.pixels.data(), 1920, 1080, 1920 * 4};
  brisel::Painter painter({.kernels = &kernels});
  for ([[maybe_unused]] auto _ : state) {
    painter.paint({.output = output, .keepsOutput = true}, [&](brisel::SpriteList& list) {
      drawAllStars({crowd.settings, crowd.random, sprites, &list}, crowd.stars);
    });
    benchmark::ClobberMemory();
  }
}

void printTable(const bench::Rates& rates, const std::string& set,
                const std::vector<Frame>& grown) {
  const auto milliseconds = [&](const std::string& name) {
    return rates.of(name) > 0.0 ? 1000.0 / rates.of(name) : 0.0;
  };
  std::printf("Instruction set: %s. Milliseconds a frame, and how many times plain's rate\n\n",
              set.c_str());
  for (const std::vector<Frame>* frames : {&kScenes, &grown}) {
    for (const Frame& frame : *frames) {
      const std::string name = set + "/" + frame.name;
      std::printf("%-28s %s %s\n", frame.name.c_str(), bench::column(milliseconds(name)).c_str(),
                  bench::column(rates.ratio(name, "plain/" + frame.name)).c_str());
    }
  }
  for (const std::string name : {"simulate_30000_stars", "paint_30000_stars"}) {
    std::printf("%-28s %s\n", name.c_str(), bench::column(milliseconds(name)).c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const brisel::Kernels& kernels = bench::chosenKernels(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const std::string set = kernels.name;
  const std::vector<Frame> grown = growth();
  for (const Frame& f : kScenes) {
    addFrames("plain", f.name, f.width, f.height, f.depth, f.prepare, f.warmUpFrames);
    if (set != "plain")
      addFrames(set, f.name, f.width, f.height, f.depth, f.prepare, f.warmUpFrames);
  }
  for (const Frame& f : grown)
    addFrames(set, f.name, f.width, f.height, f.depth, f.prepare, f.warmUpFrames);
  benchmark::RegisterBenchmark("simulate_30000_stars", simulateCrowd);
  benchmark::RegisterBenchmark("paint_30000_stars",
                               [&](benchmark::State& state) { paintCrowd(state, kernels); });
  bench::Rates rates;
  benchmark::RunSpecifiedBenchmarks(&rates);
  printTable(rates, set, grown);
  benchmark::Shutdown();
}
