// Every sprite with every instruction set: random calls under each rule and depth, on a frame that
// is full of random pixels, and a digest of what they are known to draw.
#include "render/sprites.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/render/frames.h"

namespace {

using brisel::Drawing;
using brisel::StarType;
using tests::Dice;

constexpr std::int32_t kWidth = 61;
constexpr std::int32_t kHeight = 47;

tests::Scene anyScene(Dice& dice) {
  tests::Scene scene;
  scene.settings.highQuality = dice.coin();
  scene.state.rainbowShift =
      dice.oneOf({0.0f, 0.0f, 125.0f, -50.0f, -250.0f, 3.5f, 5000.0f, -50000.0f});
  scene.state.rainbowOn = dice.coin();
  scene.state.currentRandomFactor = dice.real(-1.0f, 1.0f);
  scene.state.glowScale = dice.oneOf({0.0f, 0.75f, 1.25f});
  scene.state.crossVariant = dice.oneOf<std::uint8_t>({0, 1, 3, 3});
  scene.state.textureScale = dice.oneOf({0.0f, -0.5f, 0.5f});
  scene.state.textureMix = dice.oneOf({0.0f, 0.75f});
  return scene;
}

struct Sprite {
  const char* name;
  void (*draw)(Dice& dice, Drawing& d);  // rolls a call's arguments and makes it
  int calls;                             // under each rule and depth
  std::uint64_t digest;                  // of what they draw with the usual dice
};

void PrintTo(const Sprite& sprite, std::ostream* out) {
  *out << sprite.name;
}

/// What every sprite takes.
struct Common {
  explicit Common(Dice& dice)
      : x(dice.position(kWidth)),
        y(dice.position(kHeight)),
        size(dice.logarithmic(0.2f, 5.0f * kWidth)),
        color(dice.color()),
        value(dice.value()) {}

  float x, y, size;
  brisel::Rgb color;
  float value;
};

void drawRays(Dice& dice, Drawing& d) {
  const Common c(dice);
  const int type = dice.integer(0, 6);
  const float width = c.size * dice.oneOf({0.0f, 0.001f, 0.05f, 0.05f, 0.2f, 1.0f, 3.0f});
  const float angle = dice.coin() ? dice.real(-400.0f, 400.0f)
                                  : dice.oneOf({0.0f, 90.0f, -45.0f, dice.real(88.0f, 92.0f)});
  const float rays = dice.oneOf({1.0f, 2.5f, 3.0f, 4.0f, 0.0f, 11.0f});
  drawRayStar(d, static_cast<StarType>(type), c.x, c.y, c.size, width, angle, rays, c.color,
              c.value);
}

void drawCross(Dice& dice, Drawing& d) {
  const Common c(dice);
  const float angle = dice.coin() ? dice.real(-7.0f, 7.0f) : 0.0f;
  drawCrossStar(d, c.size / 2.0f, c.x, c.y, angle, c.color, c.value);
}

void drawGlow(Dice& dice, Drawing& d) {
  const Common c(dice);
  drawGlowStar(d, c.x, c.y, c.size, c.color, c.value,
               static_cast<brisel::GlowProfile>(dice.oneOf({2, 4, 4})));
}

void drawBlics(Dice& dice, Drawing& d) {
  const Common c(dice);
  const auto profile = static_cast<brisel::BlicsProfile>(dice.oneOf({0, 4}));
  const float ringWidth = dice.oneOf({0.1f, 0.1f, 0.02f, 0.0f, 0.3f});
  drawBlicsStar(d, c.x, c.y, c.size, c.color, c.value, profile, ringWidth);
}

class SpriteTest : public testing::TestWithParam<Sprite> {};

TEST_P(SpriteTest, DrawsTheSameWithEveryInstructionSet) {
  std::uint32_t stream = 0;
  tests::Digest digest;
  for (const bool deep : {false, true}) {
    for (const brisel::BlendRule rule : tests::kAllRules) {
      for (int call = 0; call < GetParam().calls && !HasFailure(); ++call) {
        Dice dice(stream++);
        SCOPED_TRACE(testing::Message() << "stream " << stream - 1 << (deep ? ", deep" : "")
                                        << ", rule " << static_cast<int>(rule));
        tests::Frame frame(kWidth, kHeight, deep);
        frame.fill(dice);
        tests::Scene scene = anyScene(dice);
        scene.rule = rule;
        const auto draw = [&](Drawing& d) {
          Dice same = dice;
          GetParam().draw(same, d);
        };
        tests::drawWithAll(scene, frame, draw, digest);
      }
    }
  }
  if (tests::seed() == tests::kUsualSeed) {
    EXPECT_EQ(digest.value, GetParam().digest);
  }
}

INSTANTIATE_TEST_SUITE_P(, SpriteTest,
                         testing::Values(Sprite{"Rays", drawRays, 80, 17934213040104600522u},
                                         Sprite{"Cross", drawCross, 40, 12612527006229467039u},
                                         Sprite{"Glow", drawGlow, 60, 17093073662934267775u},
                                         Sprite{"Blics", drawBlics, 60, 7979716983307311055u}),
                         [](const auto& info) { return info.param.name; });

// Row 0 shows rays that start less than a pixel above the frame, with their edges prolonged to it:
// far beyond the ray's own box, and of full coverage where an edge's corners round to one point.
TEST(Sprites, RaysJustAboveTheFrame) {
  tests::Digest digest;
  tests::Scene scene;
  scene.settings.highQuality = true;
  const brisel::Rgb color = {255, 200, 100};
  const auto oneRay = [&](StarType type, float x, float y, float size, float angle) {
    return [=](Drawing& d) { drawRayStar(d, type, x, y, size, 0.0f, angle, 1.0f, color, 1.0f); };
  };
  tests::drawWithAll(scene, tests::Frame(kWidth, 5, false),
                     oneRay(StarType::Type1, 69.1547546f, -0.477207839f, 310.915741f, 268.9133f),
                     digest);
  tests::drawWithAll(scene, tests::Frame(2200, 5, false),
                     oneRay(StarType::Type5, 2181.38f, -0.05f, 90.0f, 180.0f), digest);
  EXPECT_EQ(digest.value, 4690234236055119269u);
}

// The edges of a ray as wide as this, prolonged to row 0, cross it in the wrong order and farther
// apart than an integer can tell.
TEST(Sprites, HugeRaysJustAboveTheFrame) {
  const tests::Frame empty(kWidth, 5, false);
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    SCOPED_TRACE(kernels->name);
    tests::Frame frame = empty;
    tests::Scene scene;
    brisel::RandomGenerator random;
    Drawing d{scene.settings, random, scene.state, frame.view(), scene.rule, kernels};
    drawRayStar(d, StarType::Type1, 30.0f, -2.0f, 1.1f, 2e9f, 0.0f, 1.0f, {255, 0, 0}, 1.0f);
    expectSame(frame, empty);
  }
}

// Numbers that no setting gives: nothing outside the frame is touched, and the work stays bounded
// by the frame's size.
TEST(Sprites, AbsurdNumbersAreHarmless) {
  constexpr float kHuge = std::numeric_limits<float>::max();
  constexpr float kInf = std::numeric_limits<float>::infinity();
  const float numbers[] = {std::nanf(""), kInf, -kInf, kHuge, -kHuge, 3e9f, -3e9f, 1e-40f, 20.0f};
  const brisel::Rgb red = {255, 0, 0};
  for (const bool deep : {false, true}) {
    const tests::Frame empty(kWidth, kHeight, deep);
    for (const float a : numbers) {
      for (const float b : numbers) {
        for (const float size : {20.0f, a, b}) {
          tests::Frame frame = empty;
          tests::Scene scene;
          scene.settings.highQuality = true;
          brisel::RandomGenerator random;
          Drawing d{scene.settings, random, scene.state, frame.view(), scene.rule};
          for (int type = 1; type <= 5; ++type) {
            drawRayStar(d, static_cast<StarType>(type), a, b, size, b, a, 4.0f, red, 1.0f);
          }
          d.state.crossVariant = brisel::kTexturedCross;
          d.state.rainbowShift = 125.0f;
          drawCrossStar(d, size, a, b, b, red, 1.0f);
          drawGlowStar(d, a, b, size, red, 1.0f, brisel::GlowProfile::Full);
          drawGlowStar(d, a, b, size, red, 1.0f, brisel::GlowProfile::Simple);
          drawBlicsStar(d, a, b, size, red, 1.0f, brisel::BlicsProfile::Disc, 0.1f);
          drawBlicsStar(d, a, b, size, red, 1.0f, brisel::BlicsProfile::Ring, 0.1f);
          if (!(std::abs(a) < 1e3f) || !(std::abs(b) < 1e3f)) {
            if (size == 20.0f) expectSame(frame, empty);
          }
        }
      }
    }
  }
}

}  // namespace
