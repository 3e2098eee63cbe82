// Each sprite by size, depth and rule, and the final mix: pixels of the frame covered per second,
// as ratios to the same discs drawn by cairo's radial gradient with ADD, to a copy of the bytes
// mixed, and to the plain kernels. Small sprites by their number, too.
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "canvas.h"
#include "core/numbers.h"
#include "instructions.h"
#include "rates.h"
#include "render/stars/compose.h"

namespace {

using brisel::BlendRule;
using brisel::BlicsProfile;
using brisel::Composition;
using brisel::SpriteLook;
using brisel::StarType;

constexpr float kCenter = 380.3f;  // far enough from the edges of the painter's bands
constexpr brisel::Rgb kColor{255, 180, 90};

/// Composes a sprite of `size` pixels across, as its star body does.
struct Sprite {
  const char* name;
  std::function<void(const Composition&, const SpriteLook&)> compose;
};

void ray(const Composition& c, SpriteLook look, StarType type) {
  look.size /= 2.0f;
  drawRayStar(c, look, {type, look.size / 10.0f, 30.0f, 4.0f});
}

void cross(const Composition& c, SpriteLook look, bool textured) {
  c.state.crossVariant = textured ? brisel::kTexturedCross : brisel::kPlainCross;
  c.state.textureScale = textured ? -0.5f : 0.0f;
  c.state.textureMix = textured ? 0.75f : 0.0f;
  look.size /= 2.0f;
  drawCrossStar(c, look, 0.5f);
}

void glow(const Composition& c, const SpriteLook& look, brisel::GlowProfile profile) {
  c.state.glowScale = 1.25f;
  drawGlowStar(c, look, profile);
}

template <class Paint>
void recolored(const Composition& c, Paint paint) {
  c.state.rainbowOn = true;
  c.state.rainbowShift = -250.0f;
  paint();
  c.state.rainbowOn = false;
  c.state.rainbowShift = 0.0f;
}

void lowQualityRay(const Composition& c, const SpriteLook& look) {
  brisel::RenderSettings settings = c.settings;
  settings.highQuality = false;
  ray({settings, c.random, c.state, c.sprites}, look, StarType::Type2);
}

using brisel::GlowProfile;

const Sprite kSprites[] = {
    {"ray_type2", [](auto& c, auto& look) { ray(c, look, StarType::Type2); }},
    {"ray_type5", [](auto& c, auto& look) { ray(c, look, StarType::Type5); }},
    {"cross", [](auto& c, auto& look) { cross(c, look, false); }},
    {"cross_textured", [](auto& c, auto& look) { cross(c, look, true); }},
    {"glow1_body", [](auto& c, auto& look) { glow(c, look, GlowProfile::Full); }},
    {"halo_simple", [](auto& c, auto& look) { glow(c, look, GlowProfile::Simple); }},
    {"blics_body", [](auto& c, auto& look) { drawBlicsStar(c, look, BlicsProfile::Disc); }},
    {"blics_ring", [](auto& c, auto& look) { drawBlicsStar(c, look, BlicsProfile::Ring, 0.1f); }},
    {"ray_low_quality", lowQualityRay},
    {"ray_rainbow",
     [](auto& c, auto& look) { recolored(c, [&] { ray(c, look, StarType::Type2); }); }},
    {"cross_rainbow", [](auto& c, auto& look) { recolored(c, [&] { cross(c, look, false); }); }},
    {"glow1_rainbow",
     [](auto& c, auto& look) { recolored(c, [&] { glow(c, look, GlowProfile::Full); }); }},
    {"halo_rainbow",
     [](auto& c, auto& look) { recolored(c, [&] { glow(c, look, GlowProfile::Simple); }); }},
    {"blics_rainbow",
     [](auto& c, auto& look) {
       recolored(c, [&] { drawBlicsStar(c, look, BlicsProfile::Disc); });
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
constexpr int kSmallSizes[] = {4, 8, 16};

void runSprite(benchmark::State& state, const brisel::Kernels& kernels, const Sprite& sprite,
               BlendRule rule, bool deep, int size) {
  bench::Canvas canvas(deep, kernels);
  const SpriteLook look{{kCenter, kCenter}, static_cast<float>(size), kColor, 1.0f, rule};
  constexpr int kSpritesAtOnce = 64;
  const auto compose = [&](const Composition& c) { sprite.compose(c, look); };
  const std::int64_t pixels = canvas.coveredPixels(compose);
  for ([[maybe_unused]] auto _ : state) {
    canvas.paint(compose, kSpritesAtOnce);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kSpritesAtOnce * pixels);
}

/// Small sprites all over the canvas, as those of a crowd lie.
void runCrowd(benchmark::State& state, const brisel::Kernels& kernels, const Sprite& sprite,
              int size, bool composes) {
  constexpr int kSprites = 4000;
  bench::Canvas canvas(false, kernels);
  float number = 0.0f;
  const auto compose = [&](const Composition& c) {
    const auto along = [&](float step) {
      return brisel::fraction(number * step) * 1000.0f + 12.0f;
    };
    const brisel::PointF center{along(0.7548777f), along(0.5698403f)};
    ++number;
    sprite.compose(c, {center, static_cast<float>(size), kColor, 1.0f, BlendRule::AddScaled});
  };
  canvas.list(compose, kSprites);
  for ([[maybe_unused]] auto _ : state) {
    number = 0.0f;
    composes ? canvas.paint(compose, kSprites) : canvas.paintListed();
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kSprites);
}

void runCairo(benchmark::State& state, int size) {
  constexpr int kSide = bench::Canvas::kWidth;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kSide, kSide);
  cairo_t* cr = cairo_create(surface);
  const double radius = size / 2.0;
  cairo_pattern_t* gradient =
      cairo_pattern_create_radial(kCenter, kCenter, 0, kCenter, kCenter, radius);
  cairo_pattern_add_color_stop_rgba(gradient, 0, 1.0, 0.7, 0.35, 1.0);
  cairo_pattern_add_color_stop_rgba(gradient, 1, 1.0, 0.7, 0.35, 0.0);
  cairo_set_operator(cr, CAIRO_OPERATOR_ADD);
  cairo_set_source(cr, gradient);
  const int corner = static_cast<int>(kCenter - radius);
  for ([[maybe_unused]] auto _ : state) {
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

/// Two layers of a 1920x1080 frame, the stars' one half covered.
struct Layers {
  static constexpr std::int32_t kPixels = 1920 * 1080;
  std::vector<std::uint16_t> stars{std::vector<std::uint16_t>(std::size_t{kPixels} * 4)};
  std::vector<std::uint16_t> input{std::vector<std::uint16_t>(std::size_t{kPixels} * 4, 120)};
};

void runMix(benchmark::State& state, const brisel::Kernels& kernels, brisel::MixMode mode,
            bool deep) {
  Layers layers;
  for (std::size_t i = 0; i < layers.stars.size(); ++i) {
    layers.stars[i] = i / 512 % 2 == 0 ? static_cast<std::uint16_t>(i * 37 % 256) : 0;
  }
  const auto view = [&](std::vector<std::uint16_t>& pixels) {
    return brisel::MutableImageView{
        reinterpret_cast<std::uint8_t*>(pixels.data()), 1920, 1080, 1920 * (deep ? 8 : 4),
        deep ? brisel::PixelFormat::Argb16 : brisel::PixelFormat::Argb8};
  };
  const brisel::MutableImageView stars = view(layers.stars);
  const brisel::ImageView input = view(layers.input);
  for ([[maybe_unused]] auto _ : state) {
    kernels.mixWithInput(stars, {0, stars.height}, input, mode);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * Layers::kPixels);
}

/// Copies as many bytes as a mix reads and writes: half of three layers.
void runCopy(benchmark::State& state, bool deep) {
  Layers layers;
  const std::size_t bytes = std::size_t{Layers::kPixels} * (deep ? 12 : 6);
  std::vector<std::uint8_t> from(bytes, 1);
  std::vector<std::uint8_t> to(bytes);
  for ([[maybe_unused]] auto _ : state) {
    std::memcpy(to.data(), from.data(), bytes);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * Layers::kPixels);
}

std::string depthAndSize(bool deep, int size) {
  return std::string(deep ? "16bit/" : "8bit/") + std::to_string(size);
}

using Runner = std::function<void(benchmark::State&)>;

void add(const std::string& name, const Runner& run) {
  benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& s) { run(s); });
}

std::string crowdName(const Sprite& sprite, int size, bool composes) {
  return std::string(composes ? "crowd/" : "crowd_painted/") + sprite.name + "/" +
         std::to_string(size);
}

void registerAll(const brisel::Kernels& chosen) {
  for (const Sprite& sprite : kSprites) {
    for (const int size : kSmallSizes) {
      for (const bool composes : {false, true}) {
        add(crowdName(sprite, size, composes),
            [=, &sprite, &chosen](auto& s) { runCrowd(s, chosen, sprite, size, composes); });
      }
    }
  }
  for (const int size : kSizes) {
    add("cairo/" + std::to_string(size), [=](auto& s) { runCairo(s, size); });
  }
  for (const bool deep : {false, true}) {
    add(deep ? "copy/16bit" : "copy/8bit", [=](auto& s) { runCopy(s, deep); });
  }
  for (const brisel::Kernels* kernels : {brisel::availableKernels().front(), &chosen}) {
    const std::string set = std::string(kernels->name) + "/";
    for (const bool deep : {false, true}) {
      for (const Sprite& sprite : kSprites) {
        for (const int size : kSizes) {
          for (const Rule& rule : kRules) {
            add(set + sprite.name + "/" + rule.name + "/" + depthAndSize(deep, size),
                [=, &sprite](auto& s) { runSprite(s, *kernels, sprite, rule.rule, deep, size); });
          }
        }
      }
      for (const auto mode : {brisel::MixMode::Normal, brisel::MixMode::Add}) {
        add(set + (mode == brisel::MixMode::Normal ? "mix_normal/" : "mix_add/") +
                (deep ? "16bit" : "8bit"),
            [=](auto& s) { runMix(s, *kernels, mode, deep); });
      }
    }
    if (kernels == &chosen) return;
  }
}

void printRow(const bench::Rates& rates, const std::string& set, const Sprite& sprite,
              const std::string& depthAndSize, const std::string& cairo) {
  const auto name = [&](const std::string& of, const char* rule) {
    return of + "/" + sprite.name + "/" + rule + "/" + depthAndSize;
  };
  if (rates.of(name(set, "AddScaled")) == 0.0) return;
  std::printf("%-15s %-10s", sprite.name, depthAndSize.c_str());
  for (const Rule& rule : kRules) {
    std::printf(" %s", bench::column(rates.ratio(name(set, rule.name), cairo)).c_str());
  }
  for (const Rule& rule : kRules) {
    const double ratio = rates.ratio(name(set, rule.name), name("plain", rule.name));
    std::printf(" %s", bench::column(ratio).c_str());
  }
  std::printf("\n");
}

void printCrowds(const bench::Rates& rates) {
  std::printf("\nMillions of small sprites per second, all over a frame of 8 bits, by size\n\n");
  std::printf("%-15s %26s %26s\n%-15s", "", "painted", "composed and painted", "");
  for (int column = 0; column < 2; ++column) {
    for (const int size : kSmallSizes) std::printf(" %5d px", size);
  }
  std::printf("\n");
  for (const Sprite& sprite : kSprites) {
    std::printf("%-15s", sprite.name);
    for (const bool composes : {false, true}) {
      for (const int size : kSmallSizes) {
        const double rate = rates.of(crowdName(sprite, size, composes));
        std::printf(" %s", bench::column(rate / 1e6).c_str());
      }
    }
    std::printf("\n");
  }
}

void printTable(const bench::Rates& rates, const std::string& set) {
  std::printf("Instruction set: %s. Pixels covered per second, as a multiple of\n\n", set.c_str());
  std::printf("%26s %44s %44s\n%26s", "", "cairo (radial gradient, ADD)", "the plain kernels", "");
  for (int column = 0; column < 2; ++column) {
    for (const Rule& rule : kRules) std::printf(" %8.8s", rule.name);
  }
  std::printf("\n");
  for (const Sprite& sprite : kSprites) {
    for (const bool deep : {false, true}) {
      for (const int size : kSizes) {
        printRow(rates, set, sprite, depthAndSize(deep, size), "cairo/" + std::to_string(size));
      }
    }
  }
  std::printf("\n%-26s %8s %8s   (copy: of the bytes it reads and writes)\n", "", "x copy",
              "x plain");
  for (const std::string mix :
       {"mix_normal/8bit", "mix_normal/16bit", "mix_add/8bit", "mix_add/16bit"}) {
    const std::string copy = "copy" + mix.substr(mix.find('/'));
    std::printf("%-26s %s %s\n", mix.c_str(),
                bench::column(rates.ratio(set + "/" + mix, copy)).c_str(),
                bench::column(rates.ratio(set + "/" + mix, "plain/" + mix)).c_str());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const brisel::Kernels& kernels = bench::chosenKernels(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  registerAll(kernels);
  bench::Rates rates;
  benchmark::RunSpecifiedBenchmarks(&rates);
  printTable(rates, kernels.name);
  printCrowds(rates);
  benchmark::Shutdown();
}
