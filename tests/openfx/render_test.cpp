// Frames of the built plug-in: the effect's own, in every layout of pixels and in any order.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/openfx/frames.h"

namespace {

using namespace tests;
using brisel::Values;
using hostkit::OpenFxEffect;
using hostkit::OpenFxPicture;
using hostkit::PictureKind;

TEST(OpenFxRender, DrawsWhatTheEffectDrawsInEveryLayout) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  // How far a channel may be: bytes are the same; Short and the effect's 16 bits differ in scale;
  // floats are what the effect truncates to a step.
  const std::pair<const char*, double> depths[] = {
      {kOfxBitDepthByte, 0}, {kOfxBitDepthShort, 1.01 / 65535}, {kOfxBitDepthFloat, 0.51 * kStep}};
  for (const auto& [depth, tolerance] : depths) {
    for (const char* components : {kOfxImageComponentRGBA, kOfxImageComponentRGB}) {
      const bool hasAlpha = components == std::string(kOfxImageComponentRGBA);
      for (const double mix : {1.0, 2.0, 3.0}) {
        if (mix == 1 && !hasAlpha) continue;  // which is over black then
        SCOPED_TRACE(std::string(depth) + components + std::to_string(mix));
        const PictureKind kind{depth, components, kOfxImageUnPreMultiplied};
        const OpenFxPicture source = pattern(kind, kFrame, false, true);
        OpenFxPicture output(kind, kFrame, mix == 2);
        effect.set("mixWithOriginal", {mix - 1});
        ASSERT_EQ(renderFrame(effect, 12, source, output), kOfxStatOK);
        const bool isDeep = depth != std::string(kOfxBitDepthByte);
        const double middle = depth == std::string(kOfxBitDepthFloat) ? kStep / 2 : 0;
        const auto values = [mix](int) {
          Values busy = busyValues();
          busy.setNumber(brisel::kMixWithOriginal, mix);
          return busy;
        };
        expectFrame(output, effectFrame(values, 12, &source, isDeep), tolerance, middle);
      }
    }
  }
}

/// The channels of a premultiplied picture as if they were not.
double straight(const OpenFxPicture& picture, int x, int y, std::size_t channel) {
  const double alpha = picture.channel(x, y, 3);
  return channel == 3 || alpha == 0 ? alpha : picture.channel(x, y, channel) / alpha;
}

TEST(OpenFxRender, DrawsOverTheClipInItsOwnMemory) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  for (const char* depth : {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat}) {
    const OpenFxPicture source = pattern({depth});
    OpenFxPicture output({depth}, kFrame), both = source;
    ASSERT_EQ(renderFrame(effect, 12, source, output), kOfxStatOK);
    ASSERT_EQ(effect.render({.time = 12, .source = &both, .isChecked = false}, both), kOfxStatOK);
    EXPECT_EQ(both.bytes(), output.bytes()) << depth;
  }
}

TEST(OpenFxRender, TakesColorMultipliedByAlphaAndGivesItBack) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  effect.set("mixWithOriginal", {1});
  for (const char* depth : {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat}) {
    const PictureKind kind{depth, kOfxImageComponentRGBA, kOfxImagePreMultiplied};
    const PictureKind plain{depth, kOfxImageComponentRGBA, kOfxImageUnPreMultiplied};
    const OpenFxPicture source = pattern(kind, kFrame, false, true);
    const OpenFxPicture sourcePlain = pattern(plain, kFrame, false, true);
    OpenFxPicture output(kind, kFrame), outputPlain(plain, kFrame);
    ASSERT_EQ(renderFrame(effect, 12, source, output), kOfxStatOK);
    ASSERT_EQ(renderFrame(effect, 12, sourcePlain, outputPlain), kOfxStatOK);
    const double levels = depth == std::string(kOfxBitDepthByte) ? 255 : 32768;
    int changed = 0;
    for (int i = 0; i < kFrame.x2 * kFrame.y2; ++i) {
      const int x = i % kFrame.x2, y = i / kFrame.x2;
      const double alpha = std::min(output.channel(x, y, 3), source.channel(x, y, 3));
      for (std::size_t c = 0; c < 4; ++c) {
        const bool isSame = output.channel(x, y, c) == source.channel(x, y, c);
        const bool isSamePlain = outputPlain.channel(x, y, c) == sourcePlain.channel(x, y, c);
        ASSERT_TRUE(isSame || !isSamePlain || depth == std::string(kOfxBitDepthByte))
            << "a pixel without a star is changed";
        changed += !isSame;
        if (alpha == 0) continue;
        // Each rounding is half a level, which division by alpha makes larger.
        ASSERT_NEAR(straight(output, x, y, c), outputPlain.channel(x, y, c), 2.1 / levels / alpha);
      }
    }
    EXPECT_GT(changed, 100);
  }
}

TEST(OpenFxRender, GivesTheSameHoweverAHostRoundsAndNoFirefliesWhereAlphaVanishes) {
  const PictureKind kind{kOfxBitDepthFloat, kOfxImageComponentRGBA, kOfxImagePreMultiplied};
  OpenFxPicture source = pattern(kind, kFrame, false, true);
  for (int x = 0; x < kFrame.x2; ++x) {
    source.setChannel(x, 20, 3, 1e-40);
    source.setChannel(x, 21, 3, 1e-6);
  }
  for (const double mix : {0, 1, 2}) {
    OpenFxPicture outputs[] = {{kind, kFrame}, {kind, kFrame}};
    for (const bool roundsUp : {false, true}) {
      StrictHost host;
      OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
      makeBusy(effect);
      effect.set("mixWithOriginal", {mix});
      std::fesetround(roundsUp ? FE_UPWARD : FE_TONEAREST);
      const OfxStatus status = renderFrame(effect, 12, source, outputs[roundsUp ? 1 : 0]);
      std::fesetround(FE_TONEAREST);
      ASSERT_EQ(status, kOfxStatOK);
    }
    for (int i = 0; i < kFrame.x2 * kFrame.y2; ++i) {
      for (std::size_t c = 0; c < 4; ++c) {
        const double value = outputs[0].channel(i % kFrame.x2, i / kFrame.x2, c);
        ASSERT_TRUE(value >= 0 && value < 4) << value;
        ASSERT_EQ(value, outputs[1].channel(i % kFrame.x2, i / kFrame.x2, c)) << i << " " << c;
      }
    }
  }
}

TEST(OpenFxRender, KeepsLightAboveFullAndWhatIsNoNumber) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  const PictureKind kind{kOfxBitDepthFloat, kOfxImageComponentRGBA, kOfxImageUnPreMultiplied};
  OpenFxPicture source = pattern(kind);
  for (int x = 0; x < kFrame.x2; ++x) {
    for (std::size_t c = 0; c < 3; ++c) {
      source.setChannel(x, 20, c, 7.5);
      source.setChannel(x, 21, c, std::numeric_limits<double>::quiet_NaN());
      source.setChannel(x, 22, c, -3);
    }
  }
  effect.set("colorSchema", {1});  // stars read the clip
  OpenFxPicture output(kind, kFrame);
  ASSERT_EQ(renderFrame(effect, 12, source, output), kOfxStatOK);
  for (int x = 0; x < kFrame.x2; ++x) {
    EXPECT_GE(output.channel(x, 20, 0), 7.5);
    EXPECT_TRUE(std::isnan(output.channel(x, 21, 0)));
    EXPECT_GE(output.channel(x, 22, 0), -3);
  }
}

TEST(OpenFxRender, KeepsToTheWindowAndToWhatImagesCover) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  for (const char* depth : {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat}) {
    const PictureKind kind{depth, kOfxImageComponentRGBA, kOfxImageUnPreMultiplied};
    const OpenFxPicture source = pattern(kind);
    OpenFxPicture whole(kind, kFrame);
    ASSERT_EQ(renderFrame(effect, 12, source, whole), kOfxStatOK);
    // A part of the picture, in an image that has no more than that; StrictHost looks outside.
    const OfxRectI part{17, 5, 60, 31};
    for (const bool rowsGoDown : {false, true}) {
      for (const OfxRectI& bounds : {kFrame, part}) {
        OpenFxPicture output(kind, bounds, rowsGoDown);
        ASSERT_EQ(
            effect.render({.time = 12, .source = &source, .window = part, .frame = kFrame}, output),
            kOfxStatOK);
        for (int y = part.y1; y < part.y2; ++y) {
          for (int x = part.x1; x < part.x2; ++x) {
            ASSERT_EQ(output.channel(x, y, 1), whole.channel(x, y, 1)) << x << ' ' << y;
          }
        }
      }
    }
    // A clip that covers a part: nothing lies elsewhere.
    const OpenFxPicture small = pattern(kind, part);
    OpenFxPicture over(kind, kFrame);
    ASSERT_EQ(renderFrame(effect, 0, small, over), kOfxStatOK);
    EXPECT_EQ(over.channel(30, 30, 3), 1);
    EXPECT_EQ(over.channel(2, 2, 3), 0);
    // Rows of one field, and no others.
    OpenFxPicture field(kind, kFrame);
    const OpenFxPicture before = field;
    ASSERT_EQ(effect.render({.time = 12.5, .source = &source, .field = kOfxImageFieldUpper}, field),
              kOfxStatOK);
    for (int y = 0; y < kFrame.y2; ++y) {
      const OpenFxPicture& expected = y % 2 == 1 ? whole : before;
      ASSERT_EQ(std::memcmp(field.at(0, y), expected.at(0, y), std::size_t{4} * kFrame.x2), 0) << y;
    }
  }
}

TEST(OpenFxRender, MovesWithTheCanvasAndShrinksWithTheScale) {
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  const OfxRectI moved{-40, 300, -40 + kFrame.x2, 300 + kFrame.y2};
  const OpenFxPicture source = pattern({}), sourceMoved = pattern({}, moved);
  OpenFxPicture output({}, kFrame), there({}, moved);
  ASSERT_EQ(renderFrame(effect, 12, source, output), kOfxStatOK);
  ASSERT_EQ(renderFrame(effect, 12, sourceMoved, there), kOfxStatOK);
  EXPECT_EQ(output.bytes(), there.bytes());

  // At half the size stars fly half as many pixels.
  OpenFxPicture half({}, kFrame);
  ASSERT_EQ(effect.render({.time = 12, .source = &source, .scale = 0.5}, half), kOfxStatOK);
  const auto slower = [](int) {
    Values values = busyValues();
    values.setNumber(brisel::kInitialSpeed, 25);
    return values;
  };
  EXPECT_NE(half.bytes(), output.bytes());
  expectFrame(half, effectFrame(slower, 12, &source, false), 0);
}

TEST(OpenFxRender, GeneratesWithoutAClip) {
  for (const char* context : {kOfxContextGenerator, kOfxContextGeneral}) {
    StrictHost host;
    OpenFxEffect effect(host, thePlugin(), context);
    if (context == kOfxContextGeneral) effect.connectSource(false);
    makeBusy(effect);
    OpenFxPicture output({}, kFrame);
    ASSERT_EQ(effect.render({.time = 12}, output), kOfxStatOK);
    const auto alone = [](int) {
      Values values = busyValues();
      values.setNumber(brisel::kMixWithOriginal, 1);
      return values;
    };
    expectFrame(output, effectFrame(alone, 12, nullptr, false), 0);
  }
}

/// "Intensity" and "Start" as a person animates them.
double intensityAt(double time) {
  return 5 + time;
}

TEST(OpenFxRender, TakesEachStepsValuesAtItsOwnTime) {
  StrictHost host;
  const OpenFxPicture source = pattern({});
  const auto animated = [](int frame) {
    Values values = busyValues();
    values.setNumber(brisel::kIntensity, intensityAt(frame + 100));
    values.setPoint(brisel::kStart, 0.01 * frame * kFrame.x2, 0.25 * kFrame.y2);
    return values;
  };
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  effect.set("startFrame", {100});
  effect.parameter("intensity").curve = [](double time) { return std::vector{intensityAt(time)}; };
  effect.parameter("start").curve = [](double time) {
    return std::vector{0.01 * (time - 100), 0.75};
  };
  for (const int frame : {30, 4, 29, 0, 31, 31, 17}) {
    OpenFxPicture output({}, kFrame);
    ASSERT_EQ(renderFrame(effect, frame + 100, source, output), kOfxStatOK);
    expectFrame(output, effectFrame(animated, frame, &source, false), 0);
  }
  OpenFxPicture before({}, kFrame);
  ASSERT_EQ(renderFrame(effect, 99, source, before), kOfxStatOK);
  EXPECT_EQ(before.bytes(), source.bytes()) << "there are stars before the start frame";

  // An edit, told or not, is as if it had always been so.
  effect.set("size", {40});
  OpenFxPicture edited({}, kFrame);
  ASSERT_EQ(renderFrame(effect, 118, source, edited), kOfxStatOK);
  const auto large = [&](int frame) {
    Values values = animated(frame);
    values.setNumber(brisel::kSize, 40);
    return values;
  };
  expectFrame(edited, effectFrame(large, 18, &source, false), 0);
  const auto burstAt = [](double time, double at) { return time == at ? 300 : intensityAt(time); };
  effect.parameter("intensity").curve = [&](double time) {
    return std::vector<double>{burstAt(time, 103)};
  };
  effect.change("intensity");
  ASSERT_EQ(renderFrame(effect, 118, source, edited), kOfxStatOK);
  const auto bursting = [&](int frame) {
    Values values = large(frame);
    values.setNumber(brisel::kIntensity, burstAt(frame + 100, 103));
    return values;
  };
  expectFrame(edited, effectFrame(bursting, 18, &source, false), 0);

  // Where stars began anew after a million frames, too.
  OpenFxEffect late(host, thePlugin(), kOfxContextFilter);
  OpenFxEffect fresh(host, thePlugin(), kOfxContextFilter);
  for (OpenFxEffect* each : {&late, &fresh}) makeBusy(*each);
  const std::vector<double> frames{1'000'020, 2'000'020};
  const auto framesOf = [&](OpenFxEffect& rendering) {
    std::vector<std::vector<std::uint8_t>> pictures;
    for (const double frame : frames) {
      OpenFxPicture output({}, kFrame);
      EXPECT_EQ(renderFrame(rendering, frame, source, output), kOfxStatOK);
      pictures.push_back(output.bytes());
    }
    return pictures;
  };
  const auto unedited = framesOf(late);
  for (OpenFxEffect* each : {&late, &fresh}) each->set("intensity", {200});
  const auto expected = framesOf(fresh);
  EXPECT_NE(unedited, expected);
  EXPECT_EQ(framesOf(late), expected);
}

}  // namespace
