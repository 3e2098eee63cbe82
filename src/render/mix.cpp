#include "render/mix.h"

#include <algorithm>
#include <cstddef>

#include "render/layer.h"
#include "render/pixel_lanes.h"

namespace brisel {
namespace {

template <MixMode kMode, class Pixels, int kLanes>
Channels<kLanes> mixed(const Channels<kLanes>& star, const Channels<kLanes>& input) {
  using L = Lanes<kLanes>;
  using Float = typename L::Float;
  const Float full = L::splat(Pixels::kFullScale);
  const Float t = star.alpha / Pixels::kFullScale;
  if constexpr (kMode == MixMode::Normal) {
    const auto mix = [&](Float p, Float i) { return t * p + (1.0f - t) * i; };
    return {L::maximum(star.alpha, input.alpha), mix(star.red, input.red),
            mix(star.green, input.green), mix(star.blue, input.blue)};
  } else {
    const Float share = input.alpha / Pixels::kFullScale;
    const auto opaque = input.alpha >= Pixels::kFullScale;
    const auto mix = [&](Float p, Float i) {
      return L::minimum(p * t + (opaque ? i : i * share), full);
    };
    return {L::minimum(star.alpha + input.alpha, full), mix(star.red, input.red),
            mix(star.green, input.green), mix(star.blue, input.blue)};
  }
}

template <MixMode kMode, template <int> class PixelsT, int kLanes>
void mixLanes(std::uint8_t* output, const std::uint8_t* input) {
  using Pixels = PixelsT<kLanes>;
  const Pixels stars = Pixels::load(output);
  const Pixels under = Pixels::load(input);
  const Channels<kLanes> star = stars.channels();
  const Pixels result = Pixels::pack(mixed<kMode, Pixels, kLanes>(star, under.channels()));
  Pixels::select(star.alpha == 0.0f, under, result).store(output);
}

template <MixMode kMode, template <int> class PixelsT>
void mixRow(std::uint8_t* output, const std::uint8_t* input, std::int32_t count) {
  constexpr int kBytes = PixelsT<1>::kBytes;
  std::int32_t x = 0;
  for (; x + kBaselineLanes <= count; x += kBaselineLanes) {
    mixLanes<kMode, PixelsT, kBaselineLanes>(output + x * kBytes, input + x * kBytes);
  }
  for (; x < count; ++x) mixLanes<kMode, PixelsT, 1>(output + x * kBytes, input + x * kBytes);
}

template <MixMode kMode, template <int> class PixelsT>
void mixFrame(const RenderSettings& s, const std::uint8_t* input) {
  constexpr int kBytes = PixelsT<1>::kBytes;
  constexpr std::ptrdiff_t kChannelBytes = kBytes / 4;
  const std::ptrdiff_t rowBytes = s.inputRowStride * kChannelBytes;
  const Layer output = outputLayer(s);
  static constexpr std::uint8_t kTransparent[kBytes] = {};
  for (std::int32_t y = 0; y < s.frameHeight; ++y) {
    std::uint8_t* row = output.at(0, y);
    const std::int32_t covered = y < s.inputHeight ? std::min(s.inputWidth, s.frameWidth) : 0;
    if (covered > 0) mixRow<kMode, PixelsT>(row, input + y * rowBytes, covered);
    for (std::int32_t x = covered; x < s.frameWidth; ++x) {
      mixLanes<kMode, PixelsT, 1>(row + x * kBytes, kTransparent);
    }
  }
}

template <MixMode kMode>
void mixByDepth(const RenderSettings& s) {
  if (s.deepColor) {
    mixFrame<kMode, Pixels16>(s, reinterpret_cast<const std::uint8_t*>(s.inputPixels16));
  } else {
    mixFrame<kMode, Pixels8>(s, s.inputPixels);
  }
}

}  // namespace

void mixWithInput(const RenderSettings& settings, MixMode mode) {
  if (mode == MixMode::Normal) {
    mixByDepth<MixMode::Normal>(settings);
  } else if (mode == MixMode::Add) {
    mixByDepth<MixMode::Add>(settings);
  }
}

}  // namespace brisel
