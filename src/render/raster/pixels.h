// Loading and storing several neighboring pixels as one vector per channel.
#pragma once

#include <bit>
#include <cstdint>

#include "core/color.h"
#include "core/numbers.h"
#include "render/simd/lanes.h"

namespace brisel {

static_assert(std::endian::native == std::endian::little,
              "channels are taken out of pixels by shifts that assume the low byte first");

template <class Isa>
struct Channels {
  using Float = typename Lanes<Isa>::Float;
  Float alpha, red, green, blue;
};

/// A pen for each lane, 0..255.
template <class Isa>
struct Pens {
  typename Lanes<Isa>::Float red, green, blue;
};

/// The same pen for all lanes, in less memory.
struct Pen {
  float red, green, blue;

  explicit Pen(Rgb color)
      : red(static_cast<float>(color.red)),
        green(static_cast<float>(color.green)),
        blue(static_cast<float>(color.blue)) {}

  template <class Isa>
  Pens<Isa> inAllLanes() const {
    using L = Lanes<Isa>;
    return {L::splat(red), L::splat(green), L::splat(blue)};
  }
};

/// What a sprite plots: the intensity of each pixel, 0 to the image's full scale, and its pen. A
/// pixel whose value is 0 stays as it is.
template <class Isa>
struct Shaded {
  typename Lanes<Isa>::Float value;
  Pens<Isa> pens;
};

/// Pixels of 8-bit channels, kLanes at a time.
template <class Isa>
struct Pixels8 {
  using L = Lanes<Isa>;
  using Word = typename L::Word;
  using Int = typename L::Int;
  using Mask = typename L::Mask;
  using Float = typename L::Float;
  static constexpr float kFullScale = 255.0f;
  static constexpr int kBytes = 4;

  Word words;

  static Pixels8 load(const std::uint8_t* from) { return {L::loadWords(from)}; }
  void store(std::uint8_t* to) const { L::storeWords(to, words); }

  /// Pixels as they lie in memory, of which some can be loaded and stored alone. `origin` is where
  /// lane 0 lies or would lie.
  struct Raw {
    Word words;
    void load(Mask mask, const std::uint8_t* origin) { words = L::loadWords(mask, origin, words); }
    void store(Mask mask, std::uint8_t* origin) const { L::storeWords(mask, origin, words); }
  };
  static Pixels8 fromRaw(const Raw& raw) { return {raw.words}; }
  Raw raw() const { return {words}; }

  /// A pen channel, 0..255, on the scale of these pixels.
  static Float penScale(Float channel) { return channel; }

  Channels<Isa> channels() const {
    return {L::toFloat(L::template byteOf<0>(words)), L::toFloat(L::template byteOf<1>(words)),
            L::toFloat(L::template byteOf<2>(words)), L::toFloat(L::template byteOf<3>(words))};
  }

  static Pixels8 pack(const Channels<Isa>& c) {
    return {L::joinBytes(L::toInt(c.alpha), L::toInt(c.red), L::toInt(c.green), L::toInt(c.blue))};
  }

  /// What pack() stores of a channel above full scale is full scale.
  static Float limited(Float channel) { return channel; }

  /// `a` in the lanes where `mask` is set, `b` elsewhere.
  static Pixels8 select(Int mask, Pixels8 a, Pixels8 b) { return {mask ? a.words : b.words}; }
};

/// Pixels of 16-bit channels: alpha and red in one word, green and blue in the next.
template <class Isa>
struct Pixels16 {
  using L = Lanes<Isa>;
  using Word = typename L::Word;
  using Int = typename L::Int;
  using Mask = typename L::Mask;
  using Float = typename L::Float;
  static constexpr float kFullScale = kDeepFullScale;
  static constexpr int kBytes = 8;

  Word alphaRed, greenBlue;

  static Pixels16 load(const std::uint8_t* from) {
    return fromRaw({L::loadWords(from), L::loadWords(from + sizeof(Word))});
  }
  void store(std::uint8_t* to) const {
    const Raw both = raw();
    L::storeWords(to, both.low);
    L::storeWords(to + sizeof(Word), both.high);
  }

  struct Raw {
    Word low, high;
    void load(Mask mask, const std::uint8_t* origin) {
      low = L::template loadPairs<0>(mask, origin, low);
      high = L::template loadPairs<1>(mask, origin + sizeof low, high);
    }
    void store(Mask mask, std::uint8_t* origin) const {
      L::template storePairs<0>(mask, origin, low);
      L::template storePairs<1>(mask, origin + sizeof low, high);
    }
  };
  static Pixels16 fromRaw(const Raw& raw) {
    return {L::template everySecond<0>(raw.low, raw.high),
            L::template everySecond<1>(raw.low, raw.high)};
  }
  Raw raw() const {
    return {L::template inTurn<0>(alphaRed, greenBlue), L::template inTurn<1>(alphaRed, greenBlue)};
  }

  static Float penScale(Float channel) { return channel * kDeepPerByte; }

  Channels<Isa> channels() const {
    const auto low = [](Word w) { return L::toFloat(__builtin_convertvector(w & 65535u, Int)); };
    const auto high = [](Word w) { return L::toFloat(__builtin_convertvector(w >> 16, Int)); };
    return {low(alphaRed), high(alphaRed), low(greenBlue), high(greenBlue)};
  }

  static Float limited(Float channel) { return L::minimum(channel, L::splat(kFullScale)); }

  static Pixels16 pack(const Channels<Isa>& c) {
    const auto word = [](Float v) { return __builtin_convertvector(L::toInt(v), Word); };
    return {word(c.alpha) | word(c.red) << 16, word(c.green) | word(c.blue) << 16};
  }

  static Pixels16 select(Int mask, Pixels16 a, Pixels16 b) {
    return {mask ? a.alphaRed : b.alphaRed, mask ? a.greenBlue : b.greenBlue};
  }
};

}  // namespace brisel
