// Instances of the effect: that they never meet, and that copies, saved ones and steps without a
// picture go on with the same bytes.
#include "effect/instance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "effect/settings.h"
#include "engine/mask_outline.h"
#include "render/painter.h"

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

/// One instance with its values; every frame over the same input.
class Clip {
 public:
  explicit Clip(int starType, PixelFormat format = PixelFormat::Argb8)
      : values_(busyValues(starType)), output_(format), input_(format) {}

  Bytes render() {
    EXPECT_TRUE(instance.render(values_, time_++, views()));
    return output_.bytes;
  }
  void step() {
    FrameViews unpainted = views();
    unpainted.output.bytes = nullptr;
    EXPECT_TRUE(instance.step(values_, time_++, unpainted));
  }
  std::vector<Bytes> renderMore(int frames) {
    std::vector<Bytes> rendered;
    for (int i = 0; i < frames; ++i) rendered.push_back(render());
    return rendered;
  }

  Instance instance;
  Painter* painter = nullptr;

 private:
  FrameViews views() { return {output_.view(), input_.view(), 2 * kFrameWidth, true, painter}; }

  Values values_;
  Picture output_;
  Picture input_;
  std::int32_t time_ = 0;
};

TEST(Instance, IsIndependentOfOthersOnOtherThreads) {
  constexpr int kFrames = 12;
  constexpr int kTypes[] = {2, 8, 11};
  std::vector<std::vector<Bytes>> alone;
  for (const int type : kTypes) alone.push_back(Clip(type).renderMore(kFrames));
  EXPECT_NE(alone[0], alone[1]);

  std::vector<Clip> inTurn;
  for (const int type : kTypes) inTurn.emplace_back(type);
  for (int frame = 0; frame < kFrames; ++frame) {
    for (std::size_t i = 0; i < inTurn.size(); ++i) {
      ASSERT_EQ(inTurn[i].render(), alone[i][static_cast<std::size_t>(frame)]) << frame;
    }
  }

  std::vector<std::vector<Bytes>> together(std::size(kTypes));
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < together.size(); ++i) {
    threads.emplace_back([&, i] { together[i] = Clip(kTypes[i]).renderMore(kFrames); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(together == alone);
}

TEST(Instance, GoesOnAsItWouldHaveAfterStepsCopiesAndRestoring) {
  for (int type = 1; type <= 12; ++type) {
    SCOPED_TRACE(type);
    const PixelFormat format = type % 2 == 0 ? PixelFormat::Argb16 : PixelFormat::Argb8;
    Clip original(type, format);
    original.renderMore(7);

    Clip stepped(type, format);
    for (int i = 0; i < 7; ++i) stepped.step();
    Clip copied = original;
    Clip restored(type, format);
    restored.renderMore(3);
    ASSERT_EQ(restored.instance.restore(original.instance.save()), RestoreResult::Restored);
    EXPECT_GT(restored.instance.starCount(), 0);
    EXPECT_EQ(stepped.instance.save(), original.instance.save());

    const std::vector<Bytes> next = original.renderMore(8);
    EXPECT_TRUE(stepped.renderMore(8) == next);
    EXPECT_TRUE(copied.renderMore(8) == next);
    EXPECT_TRUE(restored.renderMore(8) == next);
  }
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

TEST(Instance, RendersTheSameFramesWithAPainterThatOthersUseToo) {
  Painter painter({.threads = 3, .kernels = availableKernels().front()});
  Clip alone(2), first(2), second(2);
  first.painter = second.painter = &painter;
  for (int frame = 0; frame < 9; ++frame) {
    const Bytes expected = alone.render();
    ASSERT_EQ(first.render(), expected) << frame;
    ASSERT_EQ(second.render(), expected) << frame;
  }
}

TEST(Instance, MixesStarsWithTheBackdropWhereThereIsOne) {
  Values values = busyValues(2);
  values.setNumber(kMixWithOriginal, 2);
  Picture input, backdrop, over, instead;
  std::ranges::fill(backdrop.bytes, std::uint8_t{0x99});
  ASSERT_TRUE(Instance().render(values, 0, {over.view(), backdrop.view()}));
  ASSERT_TRUE(Instance().render(
      values, 0, {.output = instead.view(), .input = input.view(), .backdrop = backdrop.view()}));
  EXPECT_EQ(instead.bytes, over.bytes) << "these stars do not read the input";
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
  Clip clip(4);
  clip.renderMore(3);
  const Bytes before = clip.instance.save();
  Clip other(5);
  other.renderMore(5);
  const Bytes saved = other.instance.save();

  const auto refuses = [&](const Bytes& bytes, RestoreResult reason) {
    EXPECT_EQ(describe(clip.instance.restore(bytes)), describe(reason));
    EXPECT_EQ(clip.instance.save(), before);
  };
  for (std::size_t size = 0; size < saved.size(); ++size) {
    refuses(Bytes(saved.begin(), saved.begin() + static_cast<std::ptrdiff_t>(size)),
            RestoreResult::EndsEarly);
  }
  for (std::size_t i = 0; i < saved.size(); ++i) {
    Bytes damaged = saved;
    damaged[i] ^= 0x10;
    EXPECT_NE(clip.instance.restore(damaged), RestoreResult::Restored) << "byte " << i;
  }
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
  EXPECT_EQ(clip.instance.restore(forged(saved, kFirstStar + 4, 0.5f)), RestoreResult::Restored);
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
