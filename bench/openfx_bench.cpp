// The OpenFX plug-in at 1920x1080 with its defaults, in each depth: what it takes beyond the effect
// itself, in processor time.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "effect_frames.h"
#include "hostkit/openfx/effect.h"
#include "rates.h"

namespace {

constexpr OfxRectI kBounds{0, 0, 1920, 1080};

void renderByEffect(benchmark::State& state, brisel::PixelFormat format) {
  const std::ptrdiff_t rowBytes =
      std::ptrdiff_t{format == brisel::PixelFormat::Argb16 ? 8 : 4} * kBounds.x2;
  const std::vector<std::uint8_t> input(static_cast<std::size_t>(rowBytes) * kBounds.y2, 0x60);
  bench::renderByEffect(state, {input.data(), kBounds.x2, kBounds.y2, rowBytes, format});
}

void renderByPlugin(benchmark::State& state, const hostkit::PictureKind& kind) {
  const hostkit::OpenFxBinary binary(BRISEL_OFX_PATH);
  hostkit::OpenFxHost host;
  hostkit::OpenFxEffect effect(host, *binary.plugin(0), kOfxContextFilter);
  hostkit::OpenFxPicture source(kind, kBounds), output(kind, kBounds);
  for (int i = 0; i < kBounds.x2 * kBounds.y2 * 4; ++i) {
    source.setChannel(i / 4 % kBounds.x2, i / 4 / kBounds.x2, static_cast<std::size_t>(i % 4),
                      i % 4 == 3 ? 1 : 0.375);
  }
  int frame = 0;
  for ([[maybe_unused]] auto _ : state) {
    const OfxStatus status = effect.render(
        {.time = static_cast<double>(frame), .source = &source, .isChecked = false}, output);
    if (status != kOfxStatOK) return state.SkipWithError("a frame fails");
    frame = (frame + 1) % bench::kClipFrames;
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  struct Depth {
    const char* name;
    const char* depth;
    const char* alpha;
    brisel::PixelFormat format;
  };
  constexpr Depth kDepths[] = {
      {"Byte", kOfxBitDepthByte, kOfxImageUnPreMultiplied, brisel::PixelFormat::Argb8},
      {"Short", kOfxBitDepthShort, kOfxImageUnPreMultiplied, brisel::PixelFormat::Argb16},
      {"Float", kOfxBitDepthFloat, kOfxImageUnPreMultiplied, brisel::PixelFormat::Argb16},
      {"Float, premultiplied", kOfxBitDepthFloat, kOfxImagePreMultiplied,
       brisel::PixelFormat::Argb16}};
  for (const Depth& depth : kDepths) {
    const std::string name = depth.name;
    benchmark::RegisterBenchmark(("effect " + name).c_str(), renderByEffect, depth.format);
    benchmark::RegisterBenchmark(
        ("plug-in " + name).c_str(), renderByPlugin,
        hostkit::PictureKind{depth.depth, kOfxImageComponentRGBA, depth.alpha});
  }
  bench::Rates rates;
  benchmark::RunSpecifiedBenchmarks(&rates);
  for (const Depth& depth : kDepths) {
    const auto milliseconds = [&](const char* who) {
      return 1000 / rates.of(std::string(who) + depth.name);
    };
    std::printf(
        "%s: a frame of 1920x1080 takes the OpenFX plug-in %.1f ms, of which the effect "
        "takes %.1f: %.1f ms are overhead.\n",
        depth.name, milliseconds("plug-in "), milliseconds("effect "),
        milliseconds("plug-in ") - milliseconds("effect "));
  }
  return 0;
}
