// Scenes, masks and layers in the built plug-in.
#include <gtest/gtest.h>

#include <tuple>

#include "tests/openfx/frames.h"
#include "tests/support/folder_test.h"

namespace {

using namespace tests;
using brisel::Values;
using hostkit::OpenFxEffect;
using hostkit::OpenFxPicture;
using hostkit::PictureKind;

struct OpenFxSceneTest : FolderTest {};

TEST_F(OpenFxSceneTest, DrawsScenesAndMasksAndSaysWhyItCannot) {
  write("s.toml", "[params]\n\"Size\" = 40\n\"Intensity\" = 30\n\"Standard path\" = \"Circle\"\n");
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  const OpenFxPicture source = pattern({});
  OpenFxPicture output({}, kFrame);
  const auto values = [](double angle) {
    return [angle](int) {
      Values scene({kFrame.x2, kFrame.y2});
      scene.setNumber(brisel::kSize, 40);
      scene.setNumber(brisel::kIntensity, 30);
      scene.setNumber(brisel::kStandardPath, 5);
      scene.setNumber(brisel::kAngle, angle);
      scene.setNumber(brisel::kMixWithOriginal, 3);
      return scene;
    };
  };
  effect.parameter("scene").text = path("s.toml").string();
  ASSERT_EQ(renderFrame(effect, 9, source, output), kOfxStatOK);
  expectFrame(output, effectFrame(values(30), 9, &source, false), 0);
  effect.set("angle", {70});  // wins; what is at its default does not
  ASSERT_EQ(renderFrame(effect, 9, source, output), kOfxStatOK);
  expectFrame(output, effectFrame(values(70), 9, &source, false), 0);

  for (const auto& [name, text, reason] :
       {std::tuple{"scene", "/nowhere/s.toml", "/nowhere/s.toml"},
        {"scene", "/nowhere/\x1B[2J.toml", "/nowhere/\\x1B[2J.toml"},
        {"path", "M 1 1 Q", "\"Path\""}}) {
    const std::string before = effect.parameter(name).text;
    effect.parameter(name).text = text;
    EXPECT_EQ(renderFrame(effect, 9, source, output), kOfxStatFailed);
    EXPECT_EQ(output.bytes(), source.bytes());
    EXPECT_NE(effect.instance().message.find(reason), std::string::npos);
    effect.parameter(name).text = before;
    EXPECT_EQ(renderFrame(effect, 9, source, output), kOfxStatOK);
    EXPECT_EQ(effect.instance().message, "");
  }
  const std::vector<std::uint8_t> circle = output.bytes();
  effect.parameter("path").text = "M 10 10 L 70 12 L 40 40 Z";
  ASSERT_EQ(renderFrame(effect, 9, source, output), kOfxStatOK);
  EXPECT_NE(output.bytes(), circle);
}

TEST_F(OpenFxSceneTest, DrawsLayersOverEachOtherInEveryDepth) {
  write("s.toml",
        "[[layer]]\n[layer.params]\n\"Size\" = 40\n\"Mix with original\" = "
        "\"Normal\"\n[[layer]]\n[layer.params]\n"
        "\"Type\" = \"Type1\"\n\"Size\" = 60\n\"Mix with original\" = \"Normal\"\n");
  const auto values = [](int type, double size, double mix) {
    return [=](int) {
      Values layer({kFrame.x2, kFrame.y2});
      layer.setNumber(brisel::kType, type);
      layer.setNumber(brisel::kSize, size);
      layer.setNumber(brisel::kMixWithOriginal, mix);
      return layer;
    };
  };
  StrictHost host;
  OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  effect.parameter("scene").text = path("s.toml").string();
  for (const char* depth : {kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat}) {
    const PictureKind kind{depth, kOfxImageComponentRGBA, kOfxImageUnPreMultiplied};
    const bool isByte = depth == std::string(kOfxBitDepthByte);
    const bool isFloat = depth == std::string(kOfxBitDepthFloat);
    const OpenFxPicture source = pattern(kind);
    const EffectFrame first = effectFrame(values(2, 40, 2), 9, &source, !isByte);
    OpenFxPicture below(kind, kFrame), output(kind, kFrame);
    for (int i = 0; i < kFrame.x2 * kFrame.y2 * 4; ++i) {
      const int x = i / 4 % kFrame.x2, y = i / 4 / kFrame.x2;
      const auto c = static_cast<std::size_t>(i % 4);
      below.setChannel(x, y, c, channelOf(first, x, y, c));
    }
    ASSERT_EQ(renderFrame(effect, 9, source, output), kOfxStatOK);
    const EffectFrame both = effectFrame(values(2, 60, 2), 9, &below, !isByte);
    const double exact = isByte ? 0 : 1.01 / 65535;
    // The effect truncates twice where floats do not.
    expectFrame(output, both, isFloat ? 1.02 * kStep : exact, isFloat ? kStep : 0);
  }
}

}  // namespace
