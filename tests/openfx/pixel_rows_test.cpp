// Conversions between the host's pixels and the effect's, which are compiled for several
// instruction sets.
#include "openfx/pixel_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "render/kernels.h"

namespace {

using brisel::availableKernels;
using brisel::Kernels;
using namespace brisel::openfx;

constexpr int kPixels = 75;  // whole blocks of every instruction set, and a rest

using ByteRun = std::vector<std::uint8_t>;

const std::vector<PixelLayout>& layoutsOf(Depth depth) {
  static std::vector<PixelLayout> layouts[3];
  auto& found = layouts[static_cast<int>(depth)];
  if (found.empty()) found = {{depth, true, false}, {depth, true, true}, {depth, false, false}};
  return found;
}

class Dice {
 public:
  int below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

  /// Few and many values of each kind: none, full and beyond, next to none.
  ByteRun host(const PixelLayout& layout) {
    ByteRun run(static_cast<std::size_t>(layout.bytes() * kPixels));
    for (std::uint8_t& byte : run) byte = static_cast<std::uint8_t>(below(256));
    const auto channels = run.size() / static_cast<std::size_t>(layout.channelBytes());
    for (std::size_t i = 0; i < channels; ++i) {
      const float any = static_cast<float>(below(1000)) / 999;
      const float floats[] = {0, 1, 2.5f, 1e-6f, 1.0f / 40000, -0.25f, 0.3f, any};
      if (layout.depth == Depth::Float) {
        std::memcpy(run.data() + 4 * i, &floats[below(8)], sizeof(float));
      } else if (const int extreme = below(6); extreme < 2) {
        const auto bytes = static_cast<std::size_t>(layout.channelBytes());
        std::memset(run.data() + bytes * i, extreme == 0 ? 0 : 255, bytes);
      }
    }
    return run;
  }

  ByteRun stars(Depth depth) {
    const int full = depth == Depth::Byte ? 255 : 32768;
    ByteRun run(static_cast<std::size_t>(depth == Depth::Byte ? 4 : 8) * kPixels);
    for (int pixel = 0; pixel < kPixels; ++pixel) {
      const bool isLit = pixel < 20 || below(3) == 0;
      for (int c = 0; c < 4 && isLit; ++c) {
        const int value = below(4) == 0 ? full : below(full + 1);
        const std::size_t place =
            std::size_t{4} * static_cast<unsigned>(pixel) + static_cast<unsigned>(c);
        if (depth == Depth::Byte) run[place] = static_cast<std::uint8_t>(value);
        const auto deep = static_cast<std::uint16_t>(value);
        if (depth != Depth::Byte) std::memcpy(run.data() + 2 * place, &deep, 2);
      }
    }
    return run;
  }

 private:
  std::mt19937 random_{20};
};

/// All that becomes of the same pixels, one after the other.
ByteRun resultsOf(const PixelRows& rows, Depth depth, int count) {
  Dice dice;
  ByteRun all;
  const auto note = [&](const ByteRun& run) { all.insert(all.end(), run.begin(), run.end()); };
  for (const PixelLayout& from : layoutsOf(depth)) {
    const ByteRun host = dice.host(from);
    ByteRun effect(static_cast<std::size_t>(depth == Depth::Byte ? 4 : 8) * kPixels, 0x5A);
    rows.read(host.data(), from, count, effect.data());
    note(effect);
    for (const PixelLayout& to : layoutsOf(depth)) {
      ByteRun output(static_cast<std::size_t>(to.bytes() * kPixels), 0x5A);
      rows.convert(host.data(), from, count, to, output.data());
      note(output);
      const ByteRun stars = dice.stars(depth);
      rows.write(stars.data(), count, to, output.data());
      note(output);
      for (const FloatMix mix : {FloatMix::Normal, FloatMix::Add, FloatMix::Light}) {
        for (const std::uint8_t* under : {host.data(), static_cast<const std::uint8_t*>(nullptr)}) {
          rows.mix(stars.data(), under, from, count, mix, to, output.data());
          note(output);
          if (to.bytes() != static_cast<std::ptrdiff_t>(stars.size() / kPixels)) continue;
          ByteRun inPlace = stars;
          rows.mix(inPlace.data(), under, from, count, mix, to, inPlace.data());
          const auto size = static_cast<std::size_t>(to.bytes() * count);
          EXPECT_EQ(std::memcmp(inPlace.data(), output.data(), size), 0) << "in place";
        }
      }
    }
  }
  return all;
}

TEST(OpenFxPixelRows, AreTheSameWithEveryInstructionSet) {
  for (const Depth depth : {Depth::Byte, Depth::Short, Depth::Float}) {
    for (const int count : {1, 3, 16, 37, kPixels}) {
      const ByteRun expected = resultsOf(pixelRows("plain", depth), depth, count);
      for (const Kernels* kernels : availableKernels()) {
        const PixelRows& rows = pixelRows(kernels->name, depth);
        EXPECT_STREQ(rows.instructions, kernels->name);
        EXPECT_EQ(resultsOf(rows, depth, count), expected)
            << kernels->name << ' ' << static_cast<int>(depth) << ' ' << count;
      }
    }
  }
}

TEST(OpenFxPixelRows, GiveBackWhatTheyRead) {
  for (const Depth depth : {Depth::Byte, Depth::Short}) {
    const PixelRows& rows = pixelRows("plain", depth);
    const PixelLayout straight{depth};
    const int full = depth == Depth::Byte ? 255 : 65535;
    const int scale = depth == Depth::Byte ? 255 : 32768;
    for (int value = 0; value <= scale; ++value) {  // of the effect's
      std::uint16_t deep[4];
      std::fill_n(deep, 4, static_cast<std::uint16_t>(value));
      std::uint8_t bytes[8], host[8], again[8];
      std::fill_n(bytes, 8, static_cast<std::uint8_t>(value));
      if (depth == Depth::Short) std::memcpy(bytes, deep, sizeof bytes);
      rows.write(bytes, 1, straight, host);
      int there = host[0];
      if (depth == Depth::Short) there |= host[1] << 8;
      ASSERT_NEAR(there, static_cast<double>(value) * full / scale, 0.51);
      rows.read(host, straight, 1, again);
      ASSERT_EQ(std::memcmp(again, bytes, static_cast<std::size_t>(straight.bytes())), 0) << value;
    }
  }
}

}  // namespace
