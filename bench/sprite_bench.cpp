// Each sprite by size, depth and rule, in pixels of the frame covered per second, beside the same
// discs drawn by cairo's radial gradient with ADD. Prints the ratios to cairo at the end.
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>

#include "canvas.h"
#include "render/sprites.h"

namespace {

using brisel::BlendRule;
using brisel::Drawing;
using brisel::StarType;

constexpr float kCentre = 512.3f;
constexpr brisel::Rgb kColor{255, 180, 90};

/// A sprite of `size` pixels across, as its star body draws it.
struct Sprite {
  const char* name;
  std::function<void(Drawing&, float size)> draw;
};

void ray(Drawing& d, StarType type, float size) {
  drawRayStar(d, type, kCentre, kCentre, size / 2.0f, size / 20.0f, 30.0f, 4.0f, kColor, 1.0f);
}

void cross(Drawing& d, float size, bool textured) {
  d.state.crossVariant = textured ? brisel::kTexturedCross : brisel::kPlainCross;
  d.state.textureScale = textured ? -0.5f : 0.0f;
  d.state.textureMix = textured ? 0.75f : 0.0f;
  drawCrossStar(d, size / 2.0f, kCentre, kCentre, 0.5f, kColor, 1.0f);
}

void glow(Drawing& d, float size, float scale, brisel::GlowProfile profile) {
  d.state.glowScale = scale;
  drawGlowStar(d, kCentre, kCentre, size, kColor, 1.0f, profile);
}

void blics(Drawing& d, float size, brisel::BlicsProfile profile) {
  drawBlicsStar(d, kCentre, kCentre, size, kColor, 1.0f, profile, 0.1f);
}

const Sprite kSprites[] = {
    {"ray_type2", [](Drawing& d, float size) { ray(d, StarType::Type2, size); }},
    {"ray_type5", [](Drawing& d, float size) { ray(d, StarType::Type5, size); }},
    {"cross", [](Drawing& d, float size) { cross(d, size, false); }},
    {"cross_textured", [](Drawing& d, float size) { cross(d, size, true); }},
    {"glow1_body", [](Drawing& d, float size) { glow(d, size, 1.25f, brisel::GlowProfile::Full); }},
    {"halo_simple",
     [](Drawing& d, float size) { glow(d, size, 1.25f, brisel::GlowProfile::Simple); }},
    {"blics_body", [](Drawing& d, float size) { blics(d, size, brisel::BlicsProfile::Disc); }},
    {"blics_ring", [](Drawing& d, float size) { blics(d, size, brisel::BlicsProfile::Ring); }},
    {"blics_rainbow",
     [](Drawing& d, float size) {
       d.state.rainbowOn = true;
       d.state.rainbowShift = -250.0f;
       blics(d, size, brisel::BlicsProfile::Disc);
       d.state.rainbowOn = false;
       d.state.rainbowShift = 0.0f;
     }},
};

struct Rule {
  const char* name;
  BlendRule rule;
};
constexpr Rule kRules[] = {{"Over", BlendRule::Over},
                           {"AddScaled", BlendRule::AddScaled},
                           {"AddSolid", BlendRule::AddSolid},
                           {"AddGlow", BlendRule::AddGlow},
                           {"Lighten", BlendRule::Lighten}};
constexpr int kSizes[] = {16, 64, 256};

void runSprite(benchmark::State& state, const Sprite& sprite, BlendRule rule, bool deep, int size) {
  bench::Canvas canvas(deep);
  Drawing& drawing = canvas.drawing();
  drawing.blendRule = rule;
  const auto draw = [&](Drawing& d) { sprite.draw(d, static_cast<float>(size)); };
  const std::int64_t pixels = canvas.coveredPixels(draw);
  for (auto _ : state) {
    draw(drawing);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * pixels);
}

void runCairo(benchmark::State& state, int size) {
  constexpr int kSide = bench::Canvas::kWidth;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
  cairo_t* cr = cairo_create(surface);
  const double radius = size / 2.0;
  cairo_pattern_t* gradient =
      cairo_pattern_create_radial(kCentre, kCentre, 0, kCentre, kCentre, radius);
  cairo_pattern_add_color_stop_rgba(gradient, 0, 1.0, 0.7, 0.35, 1.0);
  cairo_pattern_add_color_stop_rgba(gradient, 1, 1.0, 0.7, 0.35, 0.0);
  cairo_set_operator(cr, CAIRO_OPERATOR_ADD);
  cairo_set_source(cr, gradient);
  const int corner = static_cast<int>(kCentre - radius);
  for (auto _ : state) {
    cairo_rectangle(cr, corner, corner, size + 1, size + 1);
    cairo_fill(cr);
    cairo_surface_flush(surface);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(static_cast<double>(state.iterations()) *
                                                    3.14159265 * radius * radius));
  cairo_pattern_destroy(gradient);
  cairo_destroy(cr);
  cairo_surface_destroy(surface);
}

void registerAll() {
  for (const int size : kSizes) {
    benchmark::RegisterBenchmark(("cairo/" + std::to_string(size)).c_str(),
                                 [size](benchmark::State& s) { runCairo(s, size); });
  }
  for (const Sprite& sprite : kSprites) {
    for (const Rule& rule : kRules) {
      for (const bool deep : {false, true}) {
        for (const int size : kSizes) {
          const std::string name = std::string(sprite.name) + "/" + rule.name + "/" +
                                   (deep ? "16" : "8") + "bit/" + std::to_string(size);
          benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& s) {
            runSprite(s, sprite, rule.rule, deep, size);
          });
        }
      }
    }
  }
}

/// Keeps the rates, so that they can be set against cairo's at the same size.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") continue;
      const auto rate = run.counters.find("items_per_second");
      if (rate != run.counters.end()) rates_[run.run_name.function_name] = rate->second.value;
    }
  }

  void printRatios() const {
    std::printf("\n%-36s %10s %8s\n", "sprite/rule/depth/size", "Mpixel/s", "x cairo");
    for (const auto& [name, rate] : rates_) {
      const auto cairo = rates_.find("cairo" + name.substr(name.rfind('/')));
      if (cairo == rates_.end()) continue;
      std::printf("%-36s %10.1f %8.2f\n", name.c_str(), rate / 1e6, rate / cairo->second);
    }
  }

 private:
  std::map<std::string, double> rates_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const brisel::Kernels& kernels = brisel::kernelsNamed(std::getenv("BRISEL_INSTRUCTIONS"));
  chooseKernels(kernels);
  registerAll();
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatios();
  benchmark::Shutdown();
}
