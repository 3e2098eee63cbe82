// Several of the host's pixels as the effect's numbers, or as floats without loss, and back.
#pragma once

#include <cstdint>
#include <type_traits>

#include "openfx/host_image.h"
#include "openfx/isa/host_depths.h"
#include "openfx/pixel_rows.h"
#include "render/raster/mix.h"

namespace brisel::openfx {

/// A function of each color; alpha stays.
template <class Isa, class Function>
[[gnu::always_inline]] inline Channels<Isa> eachColor(const Channels<Isa>& c,
                                                      const Function& function) {
  return {c.alpha, function(c.red), function(c.green), function(c.blue)};
}

/// As many pixels as the instruction set has lanes, each function.
template <class Isa, template <class> class DepthOf>
struct HostPixelsOf {
  using Depth = DepthOf<Isa>;
  using Number = typename Depth::Number;
  using Pixels = typename Depth::EffectPixels;
  using L = Lanes<Isa>;
  using Float = typename L::Float;
  static constexpr int kLanes = L::kCount;
  static constexpr bool kIsFloat = std::is_same_v<Depth, Floats<Isa>>;
  static constexpr float kFull = Pixels::kFullScale;

  /// The host's numbers, or the effect's for colors that are not multiplied by alpha: whole ones,
  /// but Float as it is.
  [[gnu::always_inline]] static Channels<Isa> exact(const std::uint8_t* from,
                                                    const PixelLayout& layout) {
    if constexpr (!kIsFloat) return whole(from, layout);
    // Below a 16-bit step colors divided by it would be fireflies, or none that are numbers.
    constexpr float kLeastAlpha = 1.0f / 32768;
    const Channels<Isa> c = load(from, layout.hasAlpha);
    if (!layout.isPremultiplied) return c;
    const Float reciprocal = 1.0f / c.alpha;
    const auto isWhole = L::absolute(c.alpha) < kLeastAlpha;
    return eachColor(c, [&](Float color) { return isWhole ? color : color * reciprocal; });
  }

  [[gnu::always_inline]] static void storeExact(const Channels<Isa>& c, const PixelLayout& layout,
                                                std::uint8_t* to) {
    store(ofHost(c, layout), layout.hasAlpha, to);
  }

  /// The effect's whole numbers.
  [[gnu::always_inline]] static Channels<Isa> whole(const std::uint8_t* from,
                                                    const PixelLayout& layout) {
    Channels<Isa> c = eachColor(load(from, layout.hasAlpha), Depth::toEffect);
    c.alpha = Depth::toEffect(c.alpha);
    if (!layout.isPremultiplied) return c;
    const Float factor = kFull / c.alpha;
    const auto isDivided = (c.alpha < kFull) & (c.alpha > 0.0f);
    return eachColor(c, [&](Float color) { return isDivided ? scaled(color, factor) : color; });
  }

  /// Those as exact() has them.
  [[gnu::always_inline]] static Channels<Isa> exactOf(const Channels<Isa>& whole) {
    if constexpr (!kIsFloat) return whole;
    const Channels<Isa> c = eachColor(whole, Depth::toHost);
    return {Depth::toHost(c.alpha), c.red, c.green, c.blue};
  }

  /// Stars mixed over exact numbers; nothing where `under` is null.
  template <FloatMix kMix>
  [[gnu::always_inline]] static Channels<Isa> mixed(const Channels<Isa>& star,
                                                    const std::uint8_t* under,
                                                    const PixelLayout& layout) {
    if constexpr (!kIsFloat && kMix == FloatMix::Light) return star;  // there is nothing below
    const Channels<Isa> below = under != nullptr ? exact(under, layout) : Channels<Isa>{};
    if constexpr (kIsFloat) {
      return mixedFloats<kMix>(exactOf(star), below);
    } else {
      constexpr MixMode kMode = kMix == FloatMix::Normal ? MixMode::Normal : MixMode::Add;
      return Pixels::pack(brisel::mixed<kMode, Pixels, Isa>(star, below)).channels();
    }
  }

  [[gnu::always_inline]] static Channels<Isa> load(const std::uint8_t* from, bool hasAlpha) {
    const auto* number = reinterpret_cast<const Number*>(from);
    if (hasAlpha) return Depth::load(number);
    Number four[4 * kLanes];
    for (int i = 0; i < kLanes; ++i, number += 3) {
      for (int c = 0; c < 3; ++c) four[4 * i + c] = number[c];
      four[4 * i + 3] = Depth::kFull;
    }
    return Depth::load(four);
  }

  [[gnu::always_inline]] static void store(const Channels<Isa>& c, bool hasAlpha,
                                           std::uint8_t* to) {
    auto* number = reinterpret_cast<Number*>(to);
    if (hasAlpha) return Depth::store(c, number);
    Number four[4 * kLanes];
    Depth::store(c, four);
    for (int i = 0; i < kLanes; ++i, number += 3) {
      for (int channel = 0; channel < 3; ++channel) number[channel] = four[4 * i + channel];
    }
  }

  [[gnu::always_inline]] static Channels<Isa> ofHost(const Channels<Isa>& exact,
                                                     const PixelLayout& layout) {
    const bool isMultiplied = layout.isPremultiplied || !layout.hasAlpha;
    if constexpr (kIsFloat) {
      if (!isMultiplied) return exact;
      return eachColor(exact, [&](Float color) { return color * exact.alpha; });
    }
    Channels<Isa> c = exact;
    if (isMultiplied) {
      const Float share = c.alpha * (1.0f / kFull);
      c = eachColor(c, [&](Float v) { return exact.alpha >= kFull ? v : scaled(v, share); });
    }
    c = eachColor(c, Depth::toHost);
    return {Depth::toHost(c.alpha), c.red, c.green, c.blue};
  }

 private:
  /// Color by a factor, rounded and held to full.
  [[gnu::always_inline]] static Float scaled(Float color, Float factor) {
    return L::truncated(L::minimum(color * factor + 0.5f, L::splat(kFull)));
  }

  template <FloatMix kMix>
  [[gnu::always_inline]] static Channels<Isa> mixedFloats(const Channels<Isa>& star,
                                                          const Channels<Isa>& under) {
    const Float alpha = under.alpha;
    const Float sum = L::minimum(L::maximum(L::splat(1.0f), alpha), star.alpha + alpha);
    const auto mix = [&](Float starColor, Float color) {
      const Float light = star.alpha * starColor;
      if constexpr (kMix == FloatMix::Normal) return light + (1.0f - star.alpha) * color;
      if constexpr (kMix == FloatMix::Add) return light + (alpha >= 1.0f ? color : color * alpha);
      return sum > 0.0f ? (light + color * alpha) / sum : Float{};
    };
    const Float both = kMix == FloatMix::Normal ? L::maximum(alpha, star.alpha) : sum;
    return {both, mix(star.red, under.red), mix(star.green, under.green),
            mix(star.blue, under.blue)};
  }
};

}  // namespace brisel::openfx
