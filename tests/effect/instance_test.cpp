// Instances of the effect: what they read and write, and which saved ones they refuse.
#include "effect/instance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "effect/settings.h"
#include "engine/mask_outline.h"

namespace {

using namespace brisel;
using Bytes = std::vector<std::uint8_t>;

constexpr std::int32_t kFrameWidth = 72;
constexpr std::int32_t kFrameHeight = 54;

/// A picture in memory, with a pixel of padding on each row.
struct Picture {
  explicit Picture(PixelFormat pixelFormat = PixelFormat::Argb8) : format(pixelFormat) {
    bytes.resize(static_cast<std::size_t>(rowBytes() * kFrameHeight), 0x5A);
  }
  std::ptrdiff_t rowBytes() const {
    return (kFrameWidth + 1) * (format == PixelFormat::Argb16 ? 8 : 4);
  }
  MutableImageView view() { return {bytes.data(), kFrameWidth, kFrameHeight, rowBytes(), format}; }
  MutableImageView upsideDown() {
    return {bytes.data() + rowBytes() * (kFrameHeight - 1), kFrameWidth, kFrameHeight, -rowBytes(),
            format};
  }

  PixelFormat format;
  Bytes bytes;
};

/// All that varies from star to star and frame to frame, of stars of that type.
Values busyValues(int starType) {
  Values values({kFrameWidth, kFrameHeight});
  values.setNumber(kType, starType);
  values.setNumber(kIntensity, 30);
  values.setNumber(kTimeLife, 9);
  values.setNumber(kTimeLifeDispersion, 50);
  values.setNumber(kTerminateType, 9);
  values.setNumber(kTimeOfExplode, 20);
  values.setNumber(kTypeOfHalo, 1 + starType % 4);
  values.setNumber(kTypeOfBlink, 5);
  values.setNumber(kAngleJittering, 40);
  values.setNumber(kMixWithOriginal, 1 + starType % 3);
  return values;
}

/// After some frames of stars of that type.
Instance rendered(int starType, int frames) {
  Instance instance;
  Picture picture;
  for (int time = 0; time < frames; ++time) {
    EXPECT_TRUE(instance.render(busyValues(starType), time, {picture.view()}));
  }
  return instance;
}

TEST(Instance, TakesTheMaskThatItsValuesChoose) {
  const MaskOutline mask = buildMaskOutline({{{10, 10}, {10, 10}, {10, 10}},
                                             {{20, 40}, {20, 40}, {20, 40}},
                                             {{60, 20}, {60, 20}, {60, 20}}},
                                            false, false);
  const auto frame = [](const Values& values, const MaskOutline* outline) {
    Picture picture;
    EXPECT_TRUE(Instance().render(values, 0, {picture.view()}, outline));
    return picture.bytes;
  };
  Values values = busyValues(2);
  values.setNumber(kStandardPath, 5);
  const Bytes circle = frame(values, nullptr);
  EXPECT_EQ(frame(values, &mask), circle) << "none is chosen";
  values.setNumber(kStandardPath, 2);
  const Bytes bezier = frame(values, nullptr);
  values.setNumber(kPath, 7);
  values.setNumber(kStandardPath, 5);
  EXPECT_EQ(frame(values, nullptr), bezier) << "it cannot be had";
  const Bytes masked = frame(values, &mask);
  EXPECT_TRUE(masked != bezier && masked != circle);
}

TEST(Instance, StarsChangeWithTheInputWhereTheValuesSayThatTheyReadIt) {
  const MaskOutline mask =
      buildMaskOutline({{{9, 9}, {9, 9}, {9, 9}}, {{60, 30}, {60, 30}, {60, 30}}}, false, false);
  Picture blank, striped;
  std::ranges::fill(blank.bytes, std::uint8_t{0});
  for (std::size_t i = 0; i < striped.bytes.size(); ++i) {
    striped.bytes[i] = static_cast<std::uint8_t>(i / 40 % 2 * (200 - i % 4));
  }
  const auto after = [&](const Values& values, Picture& input) {
    Instance instance;
    Picture output;
    for (int time = 0; time < 4; ++time) {
      EXPECT_TRUE(instance.step(values, time, {output.view(), input.view()}, &mask));
    }
    return instance.save();
  };
  for (int choice = 0; choice < 8 * 2 * 2 * 2; ++choice) {
    Values values = busyValues(3);
    values.setNumber(kStandardPath, 1 + choice % 8);
    values.setNumber(kPath, choice / 8 % 2);
    values.setNumber(kSizeDependOnSource, choice / 16 % 2);
    const int schema = 1 + choice / 32;
    values.setNumber(kColorSchema, schema);
    EXPECT_EQ(after(values, blank) != after(values, striped), starsReadInput(values)) << choice;
  }
}

/// Saved bytes with other ones at `offset`, and a checksum that says they are sound.
Bytes forged(Bytes saved, std::size_t offset, const auto& number) {
  std::memcpy(saved.data() + offset, &number, sizeof number);
  std::uint64_t sum = 14695981039346656037u;
  for (std::size_t i = 0; i + 8 < saved.size(); ++i) sum = (sum ^ saved[i]) * 1099511628211u;
  std::memcpy(saved.data() + saved.size() - 8, &sum, 8);
  return saved;
}

TEST(Instance, RefusesBytesThatAreNotWhatWasSavedAndStaysAsItWas) {
  Instance instance = rendered(4, 3);
  const Bytes before = instance.save();
  const Bytes saved = rendered(5, 5).save();

  const auto refuses = [&](const Bytes& bytes, RestoreResult reason) {
    EXPECT_EQ(describe(instance.restore(bytes)), describe(reason));
    EXPECT_EQ(instance.save(), before);
  };
  refuses(Bytes(saved.begin(), saved.end() - 1), RestoreResult::EndsEarly);
  Bytes longer = saved;
  longer.push_back(0);
  refuses(longer, RestoreResult::Damaged);
  refuses(Bytes(400, 'x'), RestoreResult::NoSavedInstance);
  refuses(forged(saved, 8, std::uint32_t{0x04030201}), RestoreResult::OtherByteOrder);
  refuses(forged(saved, 12, std::uint32_t{2}), RestoreResult::OtherVersion);
  refuses(forged(saved, 24, std::int32_t{-1}), RestoreResult::Damaged);  // steps
  constexpr std::size_t kFirstStar = 24 + 12 + 22 + 8;
  refuses(forged(saved, kFirstStar - 8, std::uint64_t{1} << 61), RestoreResult::Damaged);
  refuses(forged(saved, kFirstStar, 1e30f), RestoreResult::Damaged);  // random factor
  refuses(forged(saved, kFirstStar + 20, std::int32_t{1} << 30), RestoreResult::Damaged);  // rays
  EXPECT_EQ(instance.restore(forged(saved, kFirstStar + 4, 0.5f)), RestoreResult::Restored);
}

TEST(Instance, WritesThePixelsOfItsOutputAndNothingElse) {
  const Values values = busyValues(3);
  Picture upright, turned;
  const Picture input;
  ASSERT_TRUE(Instance().render(values, 0, {upright.view(), {}}));
  ASSERT_TRUE(Instance().render(values, 0, {turned.upsideDown(), {}}));
  for (std::int32_t y = 0; y < kFrameHeight; ++y) {
    const std::uint8_t* row = upright.view().at(0, y);
    EXPECT_EQ(std::memcmp(row, turned.upsideDown().at(0, y), kFrameWidth * 4), 0) << y;
    EXPECT_EQ(row[kFrameWidth * 4], 0x5A) << "padding of row " << y;
  }

  Picture deep(PixelFormat::Argb16);
  MutableImageView narrow = upright.view();
  narrow.rowBytes = 4 * kFrameWidth - 1;
  MutableImageView nowhere = upright.view();
  nowhere.bytes = nullptr;
  MutableImageView unknown = upright.view();
  unknown.format = static_cast<PixelFormat>(7);
  const Bytes before = upright.bytes;
  Instance instance;
  for (const FrameViews& views : {FrameViews{narrow, {}},
                                  {nowhere, {}},
                                  {unknown, unknown},
                                  {upright.view(), deep.view()},
                                  {upright.view(), narrow},
                                  {.output = upright.view(), .backdrop = deep.view()}}) {
    EXPECT_FALSE(instance.render(values, 0, views));
  }
  EXPECT_EQ(upright.bytes, before);
  EXPECT_EQ(instance.starCount(), 0);
}

}  // namespace
