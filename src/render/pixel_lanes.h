// Loading and storing several neighbouring pixels as one vector per channel.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "engine/numbers.h"
#include "render/simd.h"

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

/// What a sprite plots: the intensity of each pixel, up to the layer's full scale, and its pen. A
/// pixel whose value is not above 0 stays as it is.
template <class Isa>
struct Shaded {
  typename Lanes<Isa>::Float value;
  Pens<Isa> pens;
};

/// Pixels of 8-bit channels, kLanes at a time.
template <class Isa>
struct Pixels8 {
  template <class Other>
  using With = Pixels8<Other>;
  using L = Lanes<Isa>;
  using Word = typename L::Word;
  using Int = typename L::Int;
  using Float = typename L::Float;
  static constexpr float kFullScale = 255.0f;
  static constexpr int kBytes = 4;

  Word words;

  /// The first `count` pixels, at most as many as there are lanes; nothing behind them is touched.
  static Pixels8 load(const std::uint8_t* from, int count) { return {L::loadWords(from, count)}; }
  void store(std::uint8_t* to, int count) const { L::storeWords(to, words, count); }

  /// A pen channel, 0..255, on the scale of these pixels.
  static Float penScale(Float channel) { return channel; }

  Channels<Isa> channels() const {
    const auto channel = [&](int shift) {
      return L::toFloat(__builtin_convertvector((words >> shift) & 255u, Int));
    };
    return {channel(0), channel(8), channel(16), channel(24)};
  }

  static Pixels8 pack(const Channels<Isa>& c) {
    const auto word = [](Float v) { return __builtin_convertvector(L::toInt(v), Word); };
    return {word(c.alpha) | word(c.red) << 8 | word(c.green) << 16 | word(c.blue) << 24};
  }

  /// `a` in the lanes where `mask` is set, `b` elsewhere.
  static Pixels8 select(Int mask, Pixels8 a, Pixels8 b) { return {mask ? a.words : b.words}; }
};

/// Pixels of 16-bit channels: alpha and red in one word, green and blue in the next.
template <class Isa>
struct Pixels16 {
  template <class Other>
  using With = Pixels16<Other>;
  using L = Lanes<Isa>;
  using Word = typename L::Word;
  using Int = typename L::Int;
  using Float = typename L::Float;
  static constexpr float kFullScale = kDeepFullScale;
  static constexpr int kBytes = 8;

  Word alphaRed, greenBlue;

  static Pixels16 load(const std::uint8_t* from, int count) {
    const Word low = L::loadWords(from, std::min(2 * count, kLanes));
    const Word high = L::loadWords(from + sizeof low, std::max(2 * count - kLanes, 0));
    return {everySecond<0>(low, high, kSequence), everySecond<1>(low, high, kSequence)};
  }
  void store(std::uint8_t* to, int count) const {
    const Word low = interleave<0>(alphaRed, greenBlue, kSequence);
    const Word high = interleave<kLanes>(alphaRed, greenBlue, kSequence);
    L::storeWords(to, low, std::min(2 * count, kLanes));
    L::storeWords(to + sizeof low, high, std::max(2 * count - kLanes, 0));
  }

  static Float penScale(Float channel) { return channel * kDeepPerByte; }

  Channels<Isa> channels() const {
    const auto low = [](Word w) { return L::toFloat(__builtin_convertvector(w & 65535u, Int)); };
    const auto high = [](Word w) { return L::toFloat(__builtin_convertvector(w >> 16, Int)); };
    return {low(alphaRed), high(alphaRed), low(greenBlue), high(greenBlue)};
  }

  static Pixels16 pack(const Channels<Isa>& c) {
    const auto word = [](Float v) { return __builtin_convertvector(L::toInt(v), Word); };
    return {word(c.alpha) | word(c.red) << 16, word(c.green) | word(c.blue) << 16};
  }

  static Pixels16 select(Int mask, Pixels16 a, Pixels16 b) {
    return {mask ? a.alphaRed : b.alphaRed, mask ? a.greenBlue : b.greenBlue};
  }

 private:
  static constexpr int kLanes = L::kCount;
  static constexpr std::make_integer_sequence<int, kLanes> kSequence{};

  template <int kOffset, int... i>
  static Word everySecond(Word low, Word high, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(low, high, (2 * i + kOffset)...);
  }
  /// kLanes words of the sequence even[0], odd[0], even[1], odd[1] ... from word kFirst on.
  template <int kFirst, int... i>
  static Word interleave(Word even, Word odd, std::integer_sequence<int, i...>) {
    return __builtin_shufflevector(even, odd, ((kFirst + i) / 2 + (kFirst + i) % 2 * kLanes)...);
  }
};

}  // namespace brisel
