// Mixing the input under the stars, written once for every instruction set.
#pragma once

#include <algorithm>
#include <cstddef>

#include "core/image_view.h"
#include "core/options.h"
#include "render/raster/grid.h"
#include "render/raster/pixels.h"

namespace brisel {

template <MixMode kMode, class Pixels, class Isa>
Channels<Isa> mixed(const Channels<Isa>& star, const Channels<Isa>& input) {
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  const Float t = star.alpha / Pixels::kFullScale;
  if constexpr (kMode == MixMode::Normal) {
    const auto mix = [&](Float p, Float i) { return t * p + (1.0f - t) * i; };
    return {L::maximum(star.alpha, input.alpha), mix(star.red, input.red),
            mix(star.green, input.green), mix(star.blue, input.blue)};
  } else {
    const Float share = input.alpha / Pixels::kFullScale;
    const auto opaque = input.alpha >= Pixels::kFullScale;
    const auto mix = [&](Float p, Float i) {
      return Pixels::limited(p * t + (opaque ? i : i * share));
    };
    return {Pixels::limited(star.alpha + input.alpha), mix(star.red, input.red),
            mix(star.green, input.green), mix(star.blue, input.blue)};
  }
}

template <MixMode kMode, class Pixels, class Isa>
Pixels mixed(const Pixels& stars, const Pixels& under) {
  const Channels<Isa> star = stars.channels();
  const Pixels result = Pixels::pack(mixed<kMode, Pixels, Isa>(star, under.channels()));
  return Pixels::select(star.alpha == 0.0f, under, result);
}

/// Mixes `count` pixels of a row; `inputStep` is how many bytes the input advances with each pixel,
/// 0 where the input does not reach.
template <MixMode kMode, class Pixels, class Isa>
void mixRow(std::uint8_t* output, const std::uint8_t* input, std::ptrdiff_t inputStep,
            std::int32_t count) {
  constexpr int kLanes = Lanes<Isa>::kCount;
  for (; count >= kLanes; count -= kLanes) {
    mixed<kMode, Pixels, Isa>(Pixels::load(output), Pixels::load(input)).store(output);
    output += kLanes * Pixels::kBytes;
    input += kLanes * inputStep;
  }
  if (kLanes > 1 && count > 0) {
    typename Pixels::Raw stars{}, under{};
    const auto lanes = Lanes<Isa>::lanes(0, count);
    stars.load(lanes, output);
    under.load(lanes, input);
    mixed<kMode, Pixels, Isa>(Pixels::fromRaw(stars), Pixels::fromRaw(under))
        .raw()
        .store(lanes, output);
  }
}

template <MixMode kMode, class Pixels, class Isa>
void mixRows(const MutableImageView& output, IndexRange rows, const ImageView& input) {
  static constexpr std::uint8_t kTransparent[Pixels::kBytes * Lanes<Isa>::kCount] = {};
  for (std::int32_t y = rows.begin; y < rows.end; ++y) {
    std::uint8_t* row = output.at(0, y);
    const std::int32_t covered = y < input.height ? std::min(input.width, output.width) : 0;
    if (covered > 0) {
      mixRow<kMode, Pixels, Isa>(row, input.at(0, y), Pixels::kBytes, covered);
    }
    mixRow<kMode, Pixels, Isa>(row + covered * Pixels::kBytes, kTransparent, 0,
                               output.width - covered);
  }
}

template <MixMode kMode, class Isa>
void mixByDepth(const MutableImageView& output, IndexRange rows, const ImageView& input) {
  if (output.isDeep()) {
    mixRows<kMode, Pixels16<Isa>, Isa>(output, rows, input);
  } else {
    mixRows<kMode, Pixels8<Isa>, Isa>(output, rows, input);
  }
}

template <class Isa>
void mixWithInput(const MutableImageView& output, IndexRange rows, const ImageView& input,
                  MixMode mode) {
  if (mode == MixMode::Normal) {
    mixByDepth<MixMode::Normal, Isa>(output, rows, input);
  } else if (mode == MixMode::Add) {
    mixByDepth<MixMode::Add, Isa>(output, rows, input);
  }
}

}  // namespace brisel
