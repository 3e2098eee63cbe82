// Lists of sprites, painted by bands of rows on several threads.
#include "render/painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>
#include <stdexcept>

#include "tests/render/frames.h"

#if defined(__linux__)
#include <sys/resource.h>
#endif

namespace {

using namespace brisel;
using tests::Dice;

BlendRule anyRule(Dice& dice) {
  return tests::kAllRules[dice.integer(0, 4)];
}

PointF anyPoint(Dice& dice, FrameSize size) {
  return {dice.position(size.width), dice.position(size.height)};
}

void addAnySprite(Dice& dice, FrameSize frame, float largest, SpriteList& sprites) {
  const float size = dice.logarithmic(1.0f, largest);
  const float shift = dice.oneOf({0.0f, 0.0f, -250.0f});
  switch (dice.integer(0, 4)) {
    case 0:
      return sprites.add(DotSpec{dice.integer(-3, frame.width), dice.integer(-3, frame.height)});
    case 1:
      return sprites.add(GlowSpec{dice.oneOf({GlowProfile::Simple, GlowProfile::Full}),
                                  anyRule(dice), static_cast<std::int32_t>(size),
                                  anyPoint(dice, frame), dice.color(), dice.value(), shift, 0.0f,
                                  1.25f});
    case 2:
      return sprites.add(BlicsSpec{dice.oneOf({BlicsProfile::Disc, BlicsProfile::Ring}),
                                   anyRule(dice), static_cast<std::int32_t>(size),
                                   anyPoint(dice, frame), dice.color(), 0.7f, shift, 0.1f});
    case 3:
      return sprites.add(CrossSpec{dice.coin(), anyRule(dice), size, anyPoint(dice, frame), 0.8f,
                                   0.6f, dice.color(), 0.7f, shift, -0.5f, 0.75f});
    default:
      return sprites.add(RaySpec{static_cast<StarType>(dice.integer(1, 5)), anyRule(dice),
                                 dice.coin(), shift != 0.0f, dice.coin(), anyPoint(dice, frame),
                                 size, size * dice.real(0.0f, 0.3f), dice.real(-400.0f, 400.0f),
                                 dice.oneOf({1.0f, 2.5f, 5.0f}), dice.color(), dice.value(),
                                 shift});
  }
}

struct Trial {
  FrameSize size;
  int sprites;
  float largest;
};

TEST(Painter, PaintsTheSameBytesOnAnyNumberOfThreadsWithEveryInstructionSet) {
  // Many bands with all threads; several with one thread, too; several portions; next to nothing.
  const Trial trials[] = {
      {{61, 230}, 60, 90.0f}, {{9000, 70}, 60, 90.0f}, {{70, 150}, 9000, 30.0f}, {{3, 1}, 4, 9.0f}};
  std::uint32_t stream = 70000;
  Painter plain({.threads = 1, .kernels = availableKernels().front()});
  std::vector<std::unique_ptr<Painter>> painters;
  for (const int threads : {1, 2, 3, 8}) {
    painters.push_back(std::make_unique<Painter>(PaintOptions{.threads = threads}));
    EXPECT_EQ(painters.back()->threadCount(), threads);
  }
  for (const Trial& trial : trials) {
    for (int variant = 0; variant < 6; ++variant) {
      const bool deep = variant % 2 == 1;
      Dice dice(stream++);
      tests::Frame before(trial.size.width, trial.size.height, deep);
      before.fill(dice);
      tests::Frame input(trial.size.width + dice.integer(-2, 2),
                         trial.size.height + dice.integer(0, 2) - (variant & 1), deep);
      input.fill(dice);
      const auto mix = static_cast<MixMode>(1 + variant % 3);
      const auto targetOf = [&](tests::Frame& frame) {
        return PaintTarget{frame.view(), input.view(), mix, variant == 5};
      };
      const auto compose = [&](SpriteList& sprites) {
        Dice same = dice;
        for (int i = 0; i < trial.sprites; ++i) {
          addAnySprite(same, trial.size, trial.largest, sprites);
        }
      };
      tests::Frame expected = before;
      Dice same = dice;
      for (int i = 1; i <= trial.sprites; ++i) {  // each in a list of its own
        PaintTarget target = targetOf(expected);
        target.keepsOutput |= i > 1;
        if (i < trial.sprites) target.mix = MixMode::Replace;
        plain.paint(target, [&](SpriteList& sprites) {
          addAnySprite(same, trial.size, trial.largest, sprites);
        });
      }
      for (const Kernels* kernels : availableKernels()) {
        for (const auto& painter : painters) {
          SCOPED_TRACE(testing::Message() << kernels->name << ", " << painter->threadCount()
                                          << " threads, stream " << stream - 1);
          painter->useKernels(*kernels);
          tests::Frame painted = before;
          std::vector<std::atomic<int>> done(static_cast<std::size_t>(trial.size.height));
          const std::function<void(int, int)> countRows = [&](int begin, int end) {
            for (int y = begin; y < end; ++y) ++done[static_cast<std::size_t>(y)];
          };
          PaintTarget target = targetOf(painted);
          target.whenRowsAreDone = &countRows;
          painter->paint(target, compose);
          expectSame(painted, expected);
          EXPECT_EQ(std::count(done.begin(), done.end(), 1), trial.size.height);
        }
      }
    }
  }
}

TEST(Painter, KeepsAListOfBoundedSizeWhateverTheNumberOfSprites) {
  constexpr FrameSize kFrame{640, 480};
  tests::Frame frame(kFrame.width, kFrame.height, false);
  Painter({.threads = 2}).paint({.output = frame.view()}, [&](SpriteList& sprites) {
    const std::size_t most =
        SpriteList::kMostBytes +
        static_cast<std::size_t>(sprites.bandCount()) * SpriteList::kMostBytesPerBand;
    Dice dice(71000);
    for (int i = 0; i < 20000; ++i) {
      addAnySprite(dice, kFrame, 60.0f, sprites);
      ASSERT_LT(sprites.memoryBytes(), most) << "after " << i;
    }
  });
}

TEST(Painter, MixesTheInputInAsFarAsItReaches) {
  tests::Dice dice(7);
  tests::Frame input(40, 30, false), output(50, 20, false), expected(50, 20, false);
  input.fill(dice);
  output.fill(dice);
  ImageView upperLeft = input.view();
  upperLeft.width = 30;
  upperLeft.height = 10;
  const MutableImageView pixels = expected.view();
  for (std::int32_t y = 0; y < upperLeft.height; ++y) {
    std::memcpy(pixels.at(0, y), upperLeft.at(0, y), 30 * 4);
  }
  Painter painter;
  painter.paint({.output = output.view(), .input = upperLeft, .mix = MixMode::Normal},
                [](SpriteList&) {});
  for (std::int32_t y = 0; y < output.height(); ++y) {
    EXPECT_EQ(std::memcmp(output.view().at(0, y), pixels.at(0, y), 50 * 4), 0) << y;
  }
}

TEST(Kernels, HaveNamesAndTheFastestIsTheLast) {
  for (const Kernels* kernels : availableKernels())
    EXPECT_EQ(&kernelsNamed(kernels->name), kernels);
  for (const char* name : {"", "none", static_cast<const char*>(nullptr)})
    EXPECT_EQ(&kernelsNamed(name), availableKernels().back());
}

TEST(SpriteList, HasTheBandsWithMostToPaintComeFirst) {
  SpriteList sprites;
  sprites.begin({100, 64}, 16, [] {});
  const auto addDisc = [&](std::int32_t radius, float y) {
    sprites.add(
        BlicsSpec{BlicsProfile::Disc, BlendRule::Over, radius, {50.0f, y}, {}, 1.0f, 0.0f, 0.1f});
  };
  addDisc(4, 40.0f);
  addDisc(4, 40.0f);
  addDisc(4, 56.0f);
  addDisc(3, 20.0f);
  EXPECT_EQ(sprites.bandsDearestFirst(), (std::vector<std::int32_t>{2, 3, 1, 0}));
}

TEST(WorkerPool, DoesEveryPartOnceAndHandsOnTheFirstFailure) {
  WorkerPool pool(3);
  for (int round = 0; round < 200; ++round) {
    std::vector<std::atomic<int>> done(20);
    pool.run(20, [&](int part, int thread) {
      EXPECT_LT(thread, 3);
      ++done[static_cast<std::size_t>(part)];
    });
    for (const auto& times : done) ASSERT_EQ(times, 1);
    const auto fail = [](int part, int) {
      if (part % 7 == 3) throw std::runtime_error("part");
    };
    EXPECT_THROW(pool.run(20, fail), std::runtime_error);
  }
}

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(Painter, DoesWithoutThreadsThatTheSystemDoesNotGive) {
  constexpr int kWanted = 100;
  const auto paintInLittleMemory = [] {
    tests::Frame expected(60, 400, false);
    tests::Frame painted(60, 400, false);
    const auto compose = [](SpriteList& sprites) {
      Dice dice(72000);
      for (int i = 0; i < 50; ++i) addAnySprite(dice, {60, 400}, 90.0f, sprites);
    };
    Painter({.threads = 1}).paint({.output = expected.view()}, compose);
    const rlimit limit{std::size_t{192} << 20, RLIM_INFINITY};  // room for some stacks
    setrlimit(RLIMIT_AS, &limit);
    Painter painter({.threads = kWanted});
    painter.paint({.output = painted.view()}, compose);
    std::exit(painter.threadCount() < kWanted && painted.bytes() == expected.bytes() ? 0 : 1);
  };
  EXPECT_EXIT(paintInLittleMemory(), testing::ExitedWithCode(0), "");
}
#endif

}  // namespace
