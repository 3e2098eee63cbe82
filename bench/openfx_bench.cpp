// The OpenFX plug-in at 1920x1080 with its defaults, in each depth: what it takes beyond the effect
// itself, in processor time. The two render each frame by turns, so that other work on the machine
// meets both alike.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "clock.h"
#include "effect_frames.h"
#include "hostkit/error.h"
#include "hostkit/openfx/effect.h"

namespace {

constexpr OfxRectI kBounds{0, 0, 1920, 1080};

template <class Work>
double processorMilliseconds(const Work& work) {
  const std::clock_t begin = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

struct Layout {
  const char* name;
  const char* depth;
  const char* alpha;
  brisel::PixelFormat format;  // in which the effect renders
};

hostkit::OpenFxPicture opaqueClip(const hostkit::PictureKind& kind) {
  hostkit::OpenFxPicture picture(kind, kBounds);
  for (int i = 0; i < kBounds.x2 * kBounds.y2 * 4; ++i) {
    picture.setChannel(i / 4 % kBounds.x2, i / 4 / kBounds.x2, static_cast<std::size_t>(i % 4),
                       i % 4 == 3 ? 1 : 0.375);
  }
  return picture;
}

void measure(const hostkit::OpenFxBinary& binary, const Layout& layout, int turns) {
  const std::ptrdiff_t rowBytes =
      std::ptrdiff_t{layout.format == brisel::PixelFormat::Argb16 ? 8 : 4} * kBounds.x2;
  const std::vector<std::uint8_t> input(static_cast<std::size_t>(rowBytes) * kBounds.y2, 0x60);
  bench::EffectFrames effect({input.data(), kBounds.x2, kBounds.y2, rowBytes, layout.format});

  hostkit::OpenFxHost host;
  hostkit::OpenFxEffect plugIn(host, *binary.plugin(0), kOfxContextFilter);
  const hostkit::PictureKind kind{layout.depth, kOfxImageComponentRGBA, layout.alpha};
  const hostkit::OpenFxPicture source = opaqueClip(kind);
  hostkit::OpenFxPicture output(kind, kBounds);

  std::vector<double> byEffect, byPlugIn, overhead;
  for (int i = 0; i < turns * bench::kClipFrames; ++i) {
    const int frame = i % bench::kClipFrames;
    byEffect.push_back(processorMilliseconds([&] { effect.render(frame); }));
    byPlugIn.push_back(processorMilliseconds([&] {
      const hostkit::OpenFxRequest request{
          .time = static_cast<double>(frame), .source = &source, .isChecked = false};
      if (plugIn.render(request, output) != kOfxStatOK) throw hostkit::Error("a frame fails");
    }));
    overhead.push_back(byPlugIn.back() - byEffect.back());
  }
  std::sort(overhead.begin(), overhead.end());
  const auto below = [&](std::size_t percent) {
    return overhead[(overhead.size() - 1) * percent / 100];
  };
  std::printf("%-22s %8.1f %8.1f %9.1f %9.1f %9.1f\n", layout.name, bench::median(byEffect),
              bench::median(byPlugIn), below(10), below(50), below(90));
}

}  // namespace

int main(int argc, char** argv) {
  using brisel::PixelFormat;
  constexpr Layout kLayouts[] = {
      {"Byte", kOfxBitDepthByte, kOfxImageUnPreMultiplied, PixelFormat::Argb8},
      {"Byte, premultiplied", kOfxBitDepthByte, kOfxImagePreMultiplied, PixelFormat::Argb8},
      {"Short", kOfxBitDepthShort, kOfxImageUnPreMultiplied, PixelFormat::Argb16},
      {"Short, premultiplied", kOfxBitDepthShort, kOfxImagePreMultiplied, PixelFormat::Argb16},
      {"Float", kOfxBitDepthFloat, kOfxImageUnPreMultiplied, PixelFormat::Argb16},
      {"Float, premultiplied", kOfxBitDepthFloat, kOfxImagePreMultiplied, PixelFormat::Argb16}};
  const int turns = std::max(argc > 1 ? std::atoi(argv[1]) : 2, 1);
  std::printf("%-22s %17s  overhead of 10, 50 and 90 %%\n", "1920x1080", "milliseconds a frame");
  std::printf("%-22s %8s %8s %28s\n", "", "effect", "plug-in", "of frames is at most");
  try {
    const hostkit::OpenFxBinary binary(BRISEL_OFX_PATH);
    for (const Layout& layout : kLayouts) measure(binary, layout, turns);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "openfx_bench: %s\n", error.what());
    return 1;
  }
  return 0;
}
