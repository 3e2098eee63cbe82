#include "openfx/pixel_rows.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "core/numbers.h"

namespace brisel::openfx {
namespace {

static_assert(std::endian::native == std::endian::little);

// How a channel of the host's becomes one of the effect's, rounded to the nearest, and back.
struct Bytes {
  using Host = std::uint8_t;
  using Effect = std::uint8_t;
  static constexpr float kFull = 255.0f;
  static Effect effect(Host channel) { return channel; }
  static Host host(Effect channel) { return channel; }
};

struct Shorts {  // 65535 against 32768
  using Host = std::uint16_t;
  using Effect = std::uint16_t;
  static constexpr float kFull = kDeepFullScale;
  static Effect effect(Host channel) { return static_cast<Effect>((channel >> 1) + (channel & 1)); }
  static Host host(Effect channel) {
    const int half = (channel + 16383) >> 15;  // 1 above the middle
    return static_cast<Host>(2 * channel - half);
  }
};

struct Floats {
  using Host = float;
  using Effect = std::uint16_t;
  static constexpr float kFull = kDeepFullScale;
  static Effect effect(Host channel) {
    const float held = channel > 0.0f ? std::min(channel, 1.0f) : 0.0f;  // not-a-number is none
    return static_cast<Effect>(static_cast<int>(held * kFull + 0.5f));
  }
  static Host host(Effect channel) { return static_cast<float>(channel) * (1.0f / kFull); }
};

/// Color by full over alpha or the reverse, rounded and held to full.
template <class Channels>
typename Channels::Effect scaled(typename Channels::Effect color, float factor) {
  const float product = std::min(static_cast<float>(color) * factor + 0.5f, Channels::kFull);
  return static_cast<typename Channels::Effect>(static_cast<int>(product));
}

template <class Channels, bool kHasAlpha, bool kPremultiplied>
void readRun(const std::uint8_t* bytes, int count, std::uint8_t* target) {
  using Effect = typename Channels::Effect;
  const auto* from = reinterpret_cast<const typename Channels::Host*>(bytes);
  auto* to = reinterpret_cast<Effect*>(target);
  for (int i = 0; i < count; ++i, from += kHasAlpha ? 4 : 3, to += 4) {
    constexpr auto kFull = static_cast<Effect>(Channels::kFull);
    const Effect alpha = kHasAlpha ? Channels::effect(from[3]) : kFull;
    to[0] = alpha;
    for (int c = 0; c < 3; ++c) {
      const Effect color = Channels::effect(from[c]);
      const bool isWhole = !kPremultiplied || alpha == kFull || alpha == 0;
      to[c + 1] =
          isWhole ? color : scaled<Channels>(color, Channels::kFull / static_cast<float>(alpha));
    }
  }
}

template <class Channels, bool kHasAlpha, bool kPremultiplied>
void writeRun(const std::uint8_t* bytes, int count, std::uint8_t* target) {
  using Effect = typename Channels::Effect;
  const auto* from = reinterpret_cast<const Effect*>(bytes);
  auto* to = reinterpret_cast<typename Channels::Host*>(target);
  for (int i = 0; i < count; ++i, from += 4, to += kHasAlpha ? 4 : 3) {
    const Effect alpha = from[0];
    const bool isWhole = !kPremultiplied || alpha == static_cast<Effect>(Channels::kFull);
    const float share = static_cast<float>(alpha) * (1.0f / Channels::kFull);
    for (int c = 0; c < 3; ++c) {
      to[c] = Channels::host(isWhole ? from[c + 1] : scaled<Channels>(from[c + 1], share));
    }
    if constexpr (kHasAlpha) to[3] = Channels::host(alpha);
  }
}

// Straight RGBA is what most hosts have: whole pixels as one number.
template <>
void readRun<Bytes, true, false>(const std::uint8_t* from, int count, std::uint8_t* to) {
  for (int i = 0; i < count; ++i, from += 4, to += 4) {
    std::uint32_t pixel;
    std::memcpy(&pixel, from, sizeof pixel);
    pixel = std::rotl(pixel, 8);
    std::memcpy(to, &pixel, sizeof pixel);
  }
}

template <>
void writeRun<Bytes, true, false>(const std::uint8_t* from, int count, std::uint8_t* to) {
  for (int i = 0; i < count; ++i, from += 4, to += 4) {
    std::uint32_t pixel;
    std::memcpy(&pixel, from, sizeof pixel);
    pixel = std::rotr(pixel, 8);
    std::memcpy(to, &pixel, sizeof pixel);
  }
}

constexpr std::uint64_t kOnes = 0x0001000100010001;

template <>
void readRun<Shorts, true, false>(const std::uint8_t* from, int count, std::uint8_t* to) {
  for (int i = 0; i < count; ++i, from += 8, to += 8) {
    std::uint64_t pixel;
    std::memcpy(&pixel, from, sizeof pixel);
    pixel = (pixel >> 1 & 0x7FFF * kOnes) + (pixel & kOnes);
    pixel = std::rotl(pixel, 16);
    std::memcpy(to, &pixel, sizeof pixel);
  }
}

template <>
void writeRun<Shorts, true, false>(const std::uint8_t* from, int count, std::uint8_t* to) {
  for (int i = 0; i < count; ++i, from += 8, to += 8) {
    std::uint64_t pixel;
    std::memcpy(&pixel, from, sizeof pixel);
    pixel = std::rotr(pixel, 16);
    const std::uint64_t half = (pixel + 16383 * kOnes) >> 15 & kOnes;
    pixel = (pixel - half) + pixel;
    std::memcpy(to, &pixel, sizeof pixel);
  }
}

template <class Channels>
void readRunOf(const std::uint8_t* from, const PixelLayout& layout, int count, std::uint8_t* to) {
  if (!layout.hasAlpha) return readRun<Channels, false, false>(from, count, to);
  if (layout.isPremultiplied) return readRun<Channels, true, true>(from, count, to);
  readRun<Channels, true, false>(from, count, to);
}

template <class Channels>
void writeRunOf(const std::uint8_t* from, int count, const PixelLayout& layout, std::uint8_t* to) {
  if (!layout.hasAlpha) return writeRun<Channels, false, true>(from, count, to);
  if (layout.isPremultiplied) return writeRun<Channels, true, true>(from, count, to);
  writeRun<Channels, true, false>(from, count, to);
}

template <FloatMix kMix>
void mixFloatsBy(const std::uint16_t* star, int count, float* under) {
  for (int i = 0; i < count; ++i, star += 4, under += 4) {
    const float share = Floats::host(star[0]);
    const float alpha = under[3];
    const float sum = std::min(share + alpha, std::max(alpha, 1.0f));
    for (int c = 0; c < 3; ++c) {
      const float light = Floats::host(star[c + 1]);
      if constexpr (kMix == FloatMix::Replace) {
        under[c] = light;
      } else if constexpr (kMix == FloatMix::Normal) {
        under[c] = share * light + (1.0f - share) * under[c];
      } else if constexpr (kMix == FloatMix::Add) {
        under[c] = share * light + (alpha >= 1.0f ? under[c] : under[c] * alpha);
      } else {
        under[c] = sum > 0.0f ? (share * light + under[c] * alpha) / sum : 0.0f;
      }
    }
    if constexpr (kMix == FloatMix::Replace) {
      under[3] = share;
    } else {
      under[3] = kMix == FloatMix::Normal ? std::max(share, alpha) : sum;
    }
  }
}

}  // namespace

void readPixels(const std::uint8_t* from, const PixelLayout& layout, int count, std::uint8_t* to) {
  switch (layout.depth) {
    case Depth::Byte:
      return readRunOf<Bytes>(from, layout, count, to);
    case Depth::Short:
      return readRunOf<Shorts>(from, layout, count, to);
    case Depth::Float:
      return readRunOf<Floats>(from, layout, count, to);
  }
}

void writePixels(const std::uint8_t* from, int count, const PixelLayout& layout, std::uint8_t* to) {
  const auto write = layout.depth == Depth::Byte ? writeRunOf<Bytes> : writeRunOf<Shorts>;
  write(from, count, layout, to);
}

void copyPixels(const std::uint8_t* from, const PixelLayout& layout, int count,
                const PixelLayout& toLayout, std::uint8_t* to, std::uint8_t* scratch) {
  if (layout == toLayout) {
    std::memcpy(to, from, static_cast<std::size_t>(layout.bytes() * count));
  } else if (layout.depth == Depth::Float) {
    auto* floats = reinterpret_cast<float*>(scratch);
    readFloats(from, layout, count, floats);
    writeFloats(floats, count, toLayout, to);
  } else {
    readPixels(from, layout, count, scratch);
    writePixels(scratch, count, toLayout, to);
  }
}

void readFloats(const std::uint8_t* bytes, const PixelLayout& layout, int count, float* to) {
  const auto* from = reinterpret_cast<const float*>(bytes);
  // Below a 16-bit step colors divided by it would be fireflies, or none that are numbers.
  constexpr float kLeastAlpha = 1.0f / 32768;
  const int step = layout.hasAlpha ? 4 : 3;
  for (int i = 0; i < count; ++i, from += step, to += 4) {
    const float alpha = layout.hasAlpha ? from[3] : 1.0f;
    const bool isWhole = !layout.isPremultiplied || std::abs(alpha) < kLeastAlpha;
    const float factor = isWhole ? 1.0f : 1.0f / alpha;
    for (int c = 0; c < 3; ++c) to[c] = from[c] * factor;
    to[3] = alpha;
  }
}

void writeFloats(const float* from, int count, const PixelLayout& layout, std::uint8_t* bytes) {
  auto* to = reinterpret_cast<float*>(bytes);
  const int step = layout.hasAlpha ? 4 : 3;
  const bool isPremultiplied = layout.isPremultiplied || !layout.hasAlpha;
  for (int i = 0; i < count; ++i, from += 4, to += step) {
    const float factor = isPremultiplied ? from[3] : 1.0f;
    for (int c = 0; c < 3; ++c) to[c] = from[c] * factor;
    if (layout.hasAlpha) to[3] = from[3];
  }
}

void mixFloats(const std::uint8_t* stars, int count, FloatMix mix, float* under) {
  const auto* star = reinterpret_cast<const std::uint16_t*>(stars);
  switch (mix) {
    case FloatMix::Replace:
      return mixFloatsBy<FloatMix::Replace>(star, count, under);
    case FloatMix::Normal:
      return mixFloatsBy<FloatMix::Normal>(star, count, under);
    case FloatMix::Add:
      return mixFloatsBy<FloatMix::Add>(star, count, under);
    case FloatMix::Light:
      return mixFloatsBy<FloatMix::Light>(star, count, under);
  }
}

}  // namespace brisel::openfx
