// The functions upon rows of one instruction set, for the file that is compiled for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "openfx/isa/host_pixels.h"
#include "openfx/pixel_rows.h"

namespace brisel::openfx {

/// Runs of one depth, in blocks of as many pixels as there are lanes. What is left over goes
/// through a block of its own.
template <class Isa, template <class> class DepthOf>
struct Runs {
  using Block = HostPixelsOf<Isa, DepthOf>;
  using Pixels = typename Block::Pixels;
  static constexpr int kLanes = Block::kLanes;
  static constexpr int kEffectBytes = Pixels::kBytes;

  static int bytesOf(const PixelLayout& layout) { return static_cast<int>(layout.bytes()); }

  /// Pixels that are fewer than a block.
  struct Rest {
    alignas(64) std::uint8_t bytes[4 * sizeof(float) * kLanes] = {};

    void take(const std::uint8_t* from, int size) {
      std::memcpy(bytes, from, static_cast<std::size_t>(size));
    }
    void give(std::uint8_t* to, int size) const {
      std::memcpy(to, bytes, static_cast<std::size_t>(size));
    }
  };

  /// Calls block(from, to) along the run.
  template <class Work>
  [[gnu::always_inline]] static void along(const std::uint8_t* from, int fromBytes, int count,
                                           std::uint8_t* to, int toBytes, const Work& block) {
    for (; count >= kLanes; count -= kLanes) {
      block(from, to);
      from += kLanes * fromBytes;
      to += kLanes * toBytes;
    }
    if (kLanes == 1 || count == 0) return;
    Rest in, out;
    in.take(from, count * fromBytes);
    block(in.bytes, out.bytes);
    out.give(to, count * toBytes);
  }

  static void read(const std::uint8_t* from, const PixelLayout& layout, int count,
                   std::uint8_t* to) {
    along(from, bytesOf(layout), count, to, kEffectBytes,
          [&](const std::uint8_t* host, std::uint8_t* effect) {
            Pixels::pack(Block::whole(host, layout)).store(effect);
          });
  }

  static void write(const std::uint8_t* from, int count, const PixelLayout& layout,
                    std::uint8_t* to) {
    along(from, kEffectBytes, count, to, bytesOf(layout),
          [&](const std::uint8_t* effect, std::uint8_t* host) {
            Block::storeExact(Block::exactOf(Pixels::load(effect).channels()), layout, host);
          });
  }

  static void convert(const std::uint8_t* from, const PixelLayout& layout, int count,
                      const PixelLayout& toLayout, std::uint8_t* to) {
    along(from, bytesOf(layout), count, to, bytesOf(toLayout),
          [&](const std::uint8_t* host, std::uint8_t* other) {
            Block::storeExact(Block::exact(host, layout), toLayout, other);
          });
  }

  /// What pixels without a star become.
  [[gnu::always_inline]] static Channels<Isa> plain(const std::uint8_t* under,
                                                    const PixelLayout& layout,
                                                    const PixelLayout& toLayout) {
    if (under == nullptr) return Channels<Isa>{};
    if (layout == toLayout) return Block::load(under, layout.hasAlpha);
    return Block::ofHost(Block::exact(under, layout), toLayout);
  }

  template <FloatMix kMix>
  [[gnu::always_inline]] static void mixBlock(const std::uint8_t* stars, const std::uint8_t* under,
                                              const PixelLayout& layout,
                                              const PixelLayout& toLayout, std::uint8_t* output) {
    const Channels<Isa> star = Pixels::load(stars).channels();
    const auto isLit = star.alpha > 0.0f;
    const Channels<Isa> without = plain(under, layout, toLayout);
    if (!Block::L::any(isLit)) return Block::store(without, toLayout.hasAlpha, output);
    const Channels<Isa> with =
        Block::ofHost(Block::template mixed<kMix>(star, under, layout), toLayout);
    Block::store({isLit ? with.alpha : without.alpha, isLit ? with.red : without.red,
                  isLit ? with.green : without.green, isLit ? with.blue : without.blue},
                 toLayout.hasAlpha, output);
  }

  template <FloatMix kMix>
  static void mixBy(const std::uint8_t* stars, const std::uint8_t* under, const PixelLayout& layout,
                    int count, const PixelLayout& toLayout, std::uint8_t* output) {
    const int underBytes = under != nullptr ? bytesOf(layout) : 0;
    const int outputBytes = bytesOf(toLayout);
    for (; count >= kLanes; count -= kLanes) {
      mixBlock<kMix>(stars, under, layout, toLayout, output);
      stars += kLanes * kEffectBytes;
      under += kLanes * underBytes;
      output += kLanes * outputBytes;
    }
    if (kLanes == 1 || count == 0) return;
    Rest restOfStars, restUnder, restOfOutput;
    restOfStars.take(stars, count * kEffectBytes);
    if (under != nullptr) restUnder.take(under, count * underBytes);
    mixBlock<kMix>(restOfStars.bytes, under != nullptr ? restUnder.bytes : nullptr, layout,
                   toLayout, restOfOutput.bytes);
    restOfOutput.give(output, count * outputBytes);
  }

  static void mix(const std::uint8_t* stars, const std::uint8_t* under, const PixelLayout& layout,
                  int count, FloatMix mix, const PixelLayout& toLayout, std::uint8_t* output) {
    const auto run = mix == FloatMix::Normal  ? mixBy<FloatMix::Normal>
                     : mix == FloatMix::Light ? mixBy<FloatMix::Light>
                                              : mixBy<FloatMix::Add>;
    run(stars, under, layout, count, toLayout, output);
  }
};

template <class Isa, template <class> class DepthOf>
constexpr PixelRows rowTable(const char* name) {
  using R = Runs<Isa, DepthOf>;
  return {name, R::read, R::write, R::convert, R::mix};
}

}  // namespace brisel::openfx
