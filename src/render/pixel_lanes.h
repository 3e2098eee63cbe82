// Loading and storing several neighbouring pixels as one vector per channel.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

#include "engine/numbers.h"
#include "render/simd.h"

namespace brisel {

static_assert(std::endian::native == std::endian::little,
              "channels are taken out of pixels by shifts that assume the low byte first");

template <int kLanes>
struct Channels {
  using Float = typename Lanes<kLanes>::Float;
  Float alpha, red, green, blue;
};

/// Pixels of 8-bit channels, kLanes at a time.
template <int kLanes>
struct Pixels8 {
  using L = Lanes<kLanes>;
  using Word = typename L::Word;
  using Int = typename L::Int;
  using Float = typename L::Float;
  static constexpr float kFullScale = 255.0f;
  static constexpr int kBytes = 4;

  Word words;

  static Pixels8 load(const std::uint8_t* from) {
    Pixels8 p;
    std::memcpy(&p.words, from, sizeof p.words);
    return p;
  }
  void store(std::uint8_t* to) const { std::memcpy(to, &words, sizeof words); }

  /// A pen channel, 0..255, on the scale of these pixels.
  static Float penScale(Float channel) { return channel; }

  Channels<kLanes> channels() const {
    const auto channel = [&](int shift) {
      return L::toFloat(__builtin_convertvector((words >> shift) & 255u, Int));
    };
    return {channel(0), channel(8), channel(16), channel(24)};
  }

  static Pixels8 pack(const Channels<kLanes>& c) {
    const auto word = [](Float v) { return __builtin_convertvector(L::toInt(v), Word); };
    return {word(c.alpha) | word(c.red) << 8 | word(c.green) << 16 | word(c.blue) << 24};
  }

  /// `a` in the lanes where `mask` is set, `b` elsewhere.
  static Pixels8 select(Int mask, Pixels8 a, Pixels8 b) { return {mask ? a.words : b.words}; }
};

/// Pixels of 16-bit channels: alpha and red in one word, green and blue in the next.
template <int kLanes>
struct Pixels16 {
  using L = Lanes<kLanes>;
  using Word = typename L::Word;
  using Int = typename L::Int;
  using Float = typename L::Float;
  static constexpr float kFullScale = kDeepFullScale;
  static constexpr int kBytes = 8;

  Word alphaRed, greenBlue;

  static Pixels16 load(const std::uint8_t* from) {
    Word low, high;
    std::memcpy(&low, from, sizeof low);
    std::memcpy(&high, from + sizeof low, sizeof high);
    return {everySecond<0>(low, high, kSequence), everySecond<1>(low, high, kSequence)};
  }
  void store(std::uint8_t* to) const {
    const Word low = interleave<0>(alphaRed, greenBlue, kSequence);
    const Word high = interleave<kLanes>(alphaRed, greenBlue, kSequence);
    std::memcpy(to, &low, sizeof low);
    std::memcpy(to + sizeof low, &high, sizeof high);
  }

  static Float penScale(Float channel) { return channel * kDeepPerByte; }

  Channels<kLanes> channels() const {
    const auto low = [](Word w) { return L::toFloat(__builtin_convertvector(w & 65535u, Int)); };
    const auto high = [](Word w) { return L::toFloat(__builtin_convertvector(w >> 16, Int)); };
    return {low(alphaRed), high(alphaRed), low(greenBlue), high(greenBlue)};
  }

  static Pixels16 pack(const Channels<kLanes>& c) {
    const auto word = [](Float v) { return __builtin_convertvector(L::toInt(v), Word); };
    return {word(c.alpha) | word(c.red) << 16, word(c.green) | word(c.blue) << 16};
  }

  static Pixels16 select(Int mask, Pixels16 a, Pixels16 b) {
    return {mask ? a.alphaRed : b.alphaRed, mask ? a.greenBlue : b.greenBlue};
  }

 private:
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
