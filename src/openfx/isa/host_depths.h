// The host's pixels of four channels in memory, several at a time, and how a channel of them
// becomes one of the effect's, rounded to the nearest, and back.
#pragma once

#include <cstdint>
#include <cstring>

#include "render/raster/pixels.h"

namespace brisel::openfx {

template <class Isa>
using FloatsOf = typename Lanes<Isa>::Float;

template <class Isa>
struct Bytes {
  using Number = std::uint8_t;
  using EffectPixels = Pixels8<Isa>;
  static constexpr Number kFull = 255;

  static Channels<Isa> load(const Number* from) {
    const Channels<Isa> inOrder = Pixels8<Isa>::load(from).channels();
    return {inOrder.blue, inOrder.alpha, inOrder.red, inOrder.green};
  }
  static void store(const Channels<Isa>& c, Number* to) {
    Pixels8<Isa>::pack({c.red, c.green, c.blue, c.alpha}).store(to);
  }
  static FloatsOf<Isa> toEffect(FloatsOf<Isa> channel) { return channel; }
  static FloatsOf<Isa> toHost(FloatsOf<Isa> channel) { return channel; }
};

template <class Isa>
struct Shorts {  // 65535 against 32768
  using Number = std::uint16_t;
  using EffectPixels = Pixels16<Isa>;
  static constexpr Number kFull = 65535;

  static Channels<Isa> load(const Number* from) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(from);
    const Channels<Isa> inOrder = Pixels16<Isa>::load(bytes).channels();
    return {inOrder.blue, inOrder.alpha, inOrder.red, inOrder.green};
  }
  static void store(const Channels<Isa>& c, Number* to) {
    const auto pixels = Pixels16<Isa>::pack({c.red, c.green, c.blue, c.alpha});
    pixels.store(reinterpret_cast<std::uint8_t*>(to));
  }
  static FloatsOf<Isa> toEffect(FloatsOf<Isa> channel) {
    return Lanes<Isa>::truncated((channel + 1.0f) * 0.5f);
  }
  static FloatsOf<Isa> toHost(FloatsOf<Isa> channel) {
    const FloatsOf<Isa> twice = channel + channel;
    return channel > 16384.0f ? twice - 1.0f : twice;
  }
};

template <class Isa>
struct Floats {
  using Number = float;
  using EffectPixels = Pixels16<Isa>;
  static constexpr Number kFull = 1.0f;

  static Channels<Isa> load(const Number* from) {
    using L = Lanes<Isa>;
    Word words[4];
    std::memcpy(words, from, sizeof words);
    const Word redBlue[] = {L::template everySecond<0>(words[0], words[1]),
                            L::template everySecond<0>(words[2], words[3])};
    const Word greenAlpha[] = {L::template everySecond<1>(words[0], words[1]),
                               L::template everySecond<1>(words[2], words[3])};
    return {floats(L::template everySecond<1>(greenAlpha[0], greenAlpha[1])),
            floats(L::template everySecond<0>(redBlue[0], redBlue[1])),
            floats(L::template everySecond<0>(greenAlpha[0], greenAlpha[1])),
            floats(L::template everySecond<1>(redBlue[0], redBlue[1]))};
  }
  static void store(const Channels<Isa>& c, Number* to) {
    using L = Lanes<Isa>;
    const Word channels[] = {words(c.red), words(c.green), words(c.blue), words(c.alpha)};
    const Word redBlue[] = {L::template inTurn<0>(channels[0], channels[2]),
                            L::template inTurn<1>(channels[0], channels[2])};
    const Word greenAlpha[] = {L::template inTurn<0>(channels[1], channels[3]),
                               L::template inTurn<1>(channels[1], channels[3])};
    const Word all[] = {L::template inTurn<0>(redBlue[0], greenAlpha[0]),
                        L::template inTurn<1>(redBlue[0], greenAlpha[0]),
                        L::template inTurn<0>(redBlue[1], greenAlpha[1]),
                        L::template inTurn<1>(redBlue[1], greenAlpha[1])};
    std::memcpy(to, all, sizeof all);
  }
  static FloatsOf<Isa> toEffect(FloatsOf<Isa> channel) {
    return Lanes<Isa>::truncated(Lanes<Isa>::clampUnit(channel) * kDeepFullScale + 0.5f);
  }
  static FloatsOf<Isa> toHost(FloatsOf<Isa> channel) { return channel * (1.0f / kDeepFullScale); }

 private:
  using Word = typename Lanes<Isa>::Word;
  static FloatsOf<Isa> floats(Word v) { return reinterpret_cast<FloatsOf<Isa>>(v); }
  static Word words(FloatsOf<Isa> v) { return reinterpret_cast<Word>(v); }
};

}  // namespace brisel::openfx
