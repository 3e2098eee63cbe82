// Every sprite with every instruction set: random calls under each rule and depth, on a frame that
// is full of random pixels, and a digest of what they are known to paint.
#include "render/stars/compose.h"

#include <gtest/gtest.h>

#include <limits>

#include "render/painter.h"
#include "tests/render/frames.h"

namespace {

using brisel::BlendRule;
using brisel::BlicsProfile;
using brisel::Composition;
using brisel::SpriteLook;
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
  void (*compose)(Dice& dice, const Composition& c, BlendRule rule);  // rolls what it is given
  int calls;                                                          // under each rule and depth
  std::uint64_t digest;  // of what they paint with the usual dice
};

void PrintTo(const Sprite& sprite, std::ostream* out) {  // NOLINT(readability-identifier-naming)
  *out << sprite.name;
}

SpriteLook anyLook(Dice& dice, BlendRule rule) {
  SpriteLook look;
  look.center.x = dice.position(kWidth);
  look.center.y = dice.position(kHeight);
  look.size = dice.logarithmic(0.2f, 5.0f * kWidth);
  look.color = dice.color();
  look.value = dice.value();
  look.rule = rule;
  return look;
}

void drawAnyRays(Dice& dice, const Composition& c, BlendRule rule) {
  const SpriteLook look = anyLook(dice, rule);
  const int type = dice.integer(0, 6);
  const float width = look.size * dice.oneOf({0.0f, 0.001f, 0.05f, 0.05f, 0.2f, 1.0f, 3.0f});
  const float angle = dice.coin() ? dice.real(-400.0f, 400.0f)
                                  : dice.oneOf({0.0f, 90.0f, -45.0f, dice.real(88.0f, 92.0f)});
  const float rays = dice.oneOf({1.0f, 2.5f, 3.0f, 4.0f, 0.0f, 11.0f});
  drawRayStar(c, look, {static_cast<StarType>(type), width, angle, rays});
}

void drawAnyCross(Dice& dice, const Composition& c, BlendRule rule) {
  SpriteLook look = anyLook(dice, rule);
  look.size /= 2.0f;
  drawCrossStar(c, look, dice.coin() ? dice.real(-7.0f, 7.0f) : 0.0f);
}

void drawAnyGlow(Dice& dice, const Composition& c, BlendRule rule) {
  const SpriteLook look = anyLook(dice, rule);
  drawGlowStar(c, look, static_cast<brisel::GlowProfile>(dice.oneOf({2, 4, 4})));
}

void drawAnyBlics(Dice& dice, const Composition& c, BlendRule rule) {
  const SpriteLook look = anyLook(dice, rule);
  const bool isRing = dice.oneOf({0, 4}) != 0;
  const float ringWidth = dice.oneOf({0.1f, 0.1f, 0.02f, 0.0f, 0.3f});
  drawBlicsStar(c, look, isRing ? BlicsProfile::Ring : BlicsProfile::Disc, ringWidth);
}

class SpriteTest : public testing::TestWithParam<Sprite> {};

TEST_P(SpriteTest, PaintsTheKnownBytesWithEveryInstructionSet) {
  std::uint32_t stream = 0;
  tests::Digest digest;
  for (const bool deep : {false, true}) {
    for (const BlendRule rule : tests::kAllRules) {
      for (int call = 0; call < GetParam().calls && !HasFailure(); ++call) {
        Dice dice(stream++);
        SCOPED_TRACE(testing::Message() << "stream " << stream - 1 << (deep ? ", deep" : "")
                                        << ", rule " << static_cast<int>(rule));
        tests::Frame frame(kWidth, kHeight, deep);
        frame.fill(dice);
        const tests::Scene scene = anyScene(dice);
        const auto compose = [&](const Composition& c) {
          Dice same = dice;
          GetParam().compose(same, c, rule);
        };
        tests::paintWithAll(scene, frame, compose, digest);
      }
    }
  }
  if (tests::seed() == tests::kUsualSeed) {
    EXPECT_EQ(digest.value, GetParam().digest);
  }
}

INSTANTIATE_TEST_SUITE_P(, SpriteTest,
                         testing::Values(Sprite{"Rays", drawAnyRays, 80, 17934213040104600522u},
                                         Sprite{"Cross", drawAnyCross, 40, 12612527006229467039u},
                                         Sprite{"Glow", drawAnyGlow, 60, 17093073662934267775u},
                                         Sprite{"Blics", drawAnyBlics, 60, 7979716983307311055u}),
                         [](const auto& info) { return info.param.name; });

// Row 0 shows rays that start less than a pixel above the frame, with their edges prolonged to it:
// far beyond the ray's own box, and of full coverage where an edge's corners round to one point.
TEST(Sprites, RaysJustAboveTheFrameShowInItsFirstRow) {
  tests::Digest digest;
  tests::Scene scene;
  scene.settings.highQuality = true;
  const brisel::Rgb color = {255, 200, 100};
  const auto oneRay = [&](StarType type, float x, float y, float size, float angle) {
    return [=](const Composition& c) {
      drawRayStar(c, {{x, y}, size, color, 1.0f, BlendRule::Over}, {type, 0.0f, angle, 1.0f});
    };
  };
  tests::paintWithAll(scene, tests::Frame(kWidth, 5, false),
                      oneRay(StarType::Type1, 69.1547546f, -0.477207839f, 310.915741f, 268.9133f),
                      digest);
  tests::paintWithAll(scene, tests::Frame(2200, 5, false),
                      oneRay(StarType::Type5, 2181.38f, -0.05f, 90.0f, 180.0f), digest);
  EXPECT_EQ(digest.value, 4690234236055119269u);
}

// The edges of a ray as wide as this, prolonged to row 0, cross it in the wrong order and farther
// apart than an integer can tell.
TEST(Sprites, HugeRaysJustAboveTheFrameLeaveItAlone) {
  const tests::Frame empty(kWidth, 5, false);
  tests::Digest untouched, painted;
  for (const std::uint8_t byte : empty.bytes()) untouched.add(byte);
  const auto compose = [](const Composition& c) {
    drawRayStar(c, {{30.0f, -2.0f}, 1.1f, {255, 0, 0}, 1.0f, BlendRule::Over},
                {StarType::Type1, 2e9f, 0.0f, 1.0f});
  };
  tests::paintWithAll({}, empty, compose, painted);
  EXPECT_EQ(painted.value, untouched.value);
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
    brisel::Painter painter;
    for (const float a : numbers) {
      for (const float b : numbers) {
        for (const float size : {20.0f, a, b}) {
          tests::Frame frame = empty;
          tests::Scene scene;
          scene.settings.highQuality = true;
          brisel::RandomGenerator random;
          const auto compose = [&](brisel::SpriteList& sprites) {
            const Composition c{scene.settings, random, scene.state, &sprites};
            const SpriteLook look{{a, b}, size, red, 1.0f, BlendRule::Over};
            for (int type = 1; type <= 5; ++type) {
              drawRayStar(c, look, {static_cast<StarType>(type), b, a, 4.0f});
            }
            scene.state.crossVariant = brisel::kTexturedCross;
            scene.state.rainbowShift = 125.0f;
            drawCrossStar(c, look, b);
            drawGlowStar(c, look, brisel::GlowProfile::Full);
            drawGlowStar(c, look, brisel::GlowProfile::Simple);
            drawBlicsStar(c, look, BlicsProfile::Disc);
            drawBlicsStar(c, look, BlicsProfile::Ring, 0.1f);
          };
          painter.paint({.output = frame.view(), .keepsOutput = true}, compose);
          if (!(std::abs(a) < 1e3f) || !(std::abs(b) < 1e3f)) {
            if (size == 20.0f) expectSame(frame, empty);
          }
        }
      }
    }
  }
}

}  // namespace
