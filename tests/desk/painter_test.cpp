// Frames in any order against those that a render makes one after the other.
#include <gtest/gtest.h>

#include <thread>

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "cli/pipeline/scene_renderer.h"
#include "desk/render/preview.h"
#include "desk/render/scene_painter.h"
#include "desk/render/screen_image.h"
#include "scene/text/errors.h"
#include "tests/desk/desk_test.h"

namespace {

using desk::Backdrop;
using desk::FrameRequest;

class PainterTest : public tests::DeskTest {
 protected:
  desk::SharedState stateOf(const std::string& text) {
    EXPECT_TRUE(open(text));
    return document().state();
  }

  /// As a render has them, one after the other.
  std::vector<QImage> rendered(const desk::SharedState& state, int reduction, int frames) {
    cli::SceneOptions options;
    if (reduction > 1) options.scale = "1/" + std::to_string(reduction);
    cli::SceneRenderer renderer(cli::planScene(cli::readScene(path("s.toml"), options), options));
    hostkit::World output = renderer.newOutput();
    for (int i = 0; i < state->plan.scene.preroll; ++i) renderer.stepNext(renderer.readNext());
    std::vector<QImage> images;
    for (int i = 0; i < frames; ++i) {
      renderer.renderNext(renderer.readNext(), output);
      images.push_back(desk::screenImage(
          {output.bytes().data(), output.width(), output.height(), output.rowBytes(),
           output.depth() == hostkit::Depth::Bits16 ? brisel::PixelFormat::Argb16
                                                    : brisel::PixelFormat::Argb8},
          false));
    }
    return images;
  }
};

constexpr char kLayers[] = R"([scene]
size = [97, 54]
frames = 30
preroll = 11
[params]
"Intensity" = 8
"Start" = [ { frame = 0, value = [0.1, 0.5] }, { frame = 29, value = [0.9, 0.3] } ]
[mask]
path = "M 10 10 C 30 5 50 5 70 10 L 70 50 Z"
[[layer]]
[layer.params]
"Size jittering" = 50
"Type" = "Type glow1"
[[layer]]
presets = ["sparkler"]
[layer.mask]
path = [ { frame = 0, value = "M 10 10 L 20 20" }, { frame = 20, value = "M 80 10 L 20 50" } ]
)";

constexpr char kOverClip[] = R"([scene]
frames = 14
input = "clip.mp4"
[params]
"Standard path" = "Source as raster mask"
"Color schema" = "Source"
"Intensity" = 20
"Type" = "Type blics"
)";

/// Stars that are born where the still is, or at its outline.
std::string overStill(const std::string& still, const std::string& path) {
  return "[scene]\nsize = [96, 54]\nframes = 9\n" + still + "[params]\n\"Standard path\" = \"" +
         path + "\"\n\"Intensity\" = 20\n";
}

TEST_F(PainterTest, FramesInAnyOrderAreThoseOfARender) {
  makeClip("clip.mp4", 12);
  for (const int side : {20, 40}) {
    QImage still(96, 54, QImage::Format_ARGB32);
    still.fill(Qt::transparent);
    QPainter(&still).fillRect(QRect(10, 5, side, side), Qt::yellow);
    ASSERT_TRUE(still.save(QString::fromStdString(path(std::to_string(side) + ".png").string())));
  }
  // What is known of one still is not taken for another's.
  const std::string small = "input = \"20.png\"\n";
  const std::string raster = overStill(small, "Source as raster mask");
  const std::string outline = overStill(small, "Contour alpha channel");
  const std::string other = overStill("input = \"40.png\"\n", "Contour alpha channel");
  const std::string none = overStill("", "Contour alpha channel");
  struct Case {
    const char* text;
    int reduction;
    int frames;
  };
  desk::ScenePainter painter(2);
  const std::string deep = std::string(kLayers).replace(0, 8, "[scene]\ndepth = 16\n");
  for (const Case& c :
       {Case{kLayers, 1, 30}, Case{kLayers, 3, 25}, Case{deep.c_str(), 2, 8},
        Case{raster.c_str(), 1, 9}, Case{kOverClip, 1, 14}, Case{outline.c_str(), 1, 9},
        Case{other.c_str(), 1, 9}, Case{other.c_str(), 2, 9}, Case{none.c_str(), 1, 9},
        Case{kOverClip, 2, 14}}) {
    const desk::SharedState state = stateOf(c.text);
    const std::vector<QImage> expected = rendered(state, c.reduction, c.frames);
    for (const int frame : {c.frames - 1, 0, 1, c.frames / 2, c.frames / 2 - 3, 5, 5}) {
      const desk::Picture picture =
          painter.paint(FrameRequest{state, frame, c.reduction, Backdrop::Transparent}, [] {});
      EXPECT_EQ(picture.problem, QString());
      EXPECT_EQ(picture.image, expected[static_cast<std::size_t>(frame)])
          << c.text << "at 1/" << c.reduction << ", frame " << frame;
    }
  }
}

TEST_F(PainterTest, EditsShowAtOnceAndLeaveEarlierStarsKnown) {
  const desk::SharedState before = stateOf(kLayers);
  desk::ScenePainter painter(1);
  int steps = 0;
  const auto count = [&] { ++steps; };
  painter.paint(FrameRequest{before, 28}, count);
  EXPECT_EQ(steps, 2 * (28 + 11 + 1));
  document().setValue(0, brisel::kMixWithOriginal, {1}, 0);
  document().setValue(1, brisel::kSize, {3}, 0);  // of the upper layer, from the start
  document().addKey(0, brisel::kIntensity, 0);
  steps = 0;
  const desk::SharedState after = document().state();
  const QImage image = painter.paint(FrameRequest{after, 28}, count).image;
  EXPECT_LE(steps, 28 + 11 + 8 + 2);  // the lower layer goes on from a state close by
  document().save();
  EXPECT_EQ(image, rendered(after, 1, 29).back());

  steps = 0;
  document().setValue(0, brisel::kStart, {0.5, 0.5}, 29);  // counts after frame 0
  painter.paint(FrameRequest{document().state(), 28}, count);
  EXPECT_LE(steps, 2 * (28 + 11));
  steps = 0;
  painter.paint(FrameRequest{document().state(), 27}, count);
  EXPECT_LE(steps, 2 * 8);
}

TEST_F(PainterTest, StarsAreShownWithoutAnInputThatIsNotThere) {
  const desk::SharedState state = stateOf(kOverClip);
  desk::ScenePainter painter(1);
  const desk::Picture picture = painter.paint(FrameRequest{state, 3}, [] {});
  EXPECT_FALSE(picture.image.isNull());
  EXPECT_TRUE(picture.problem.contains("clip.mp4")) << picture.problem.toStdString();
}

TEST_F(PainterTest, WhatWasMadeWithoutAnInputIsForgottenOnceItIsBack) {
  makeClip("clip.mp4", 12);
  const desk::SharedState state = stateOf(kOverClip);
  desk::ScenePainter painter(1);
  std::filesystem::rename(path("clip.mp4"), path("gone.mp4"));
  EXPECT_NE(painter.paint(FrameRequest{state, 9}, [] {}).problem, QString());
  std::filesystem::rename(path("gone.mp4"), path("clip.mp4"));
  document().setInput({});
  const desk::Picture picture = painter.paint(FrameRequest{document().state(), 9}, [] {});
  EXPECT_EQ(picture.problem, QString());
  EXPECT_EQ(picture.image, rendered(state, 1, 10).back());
}

TEST_F(PainterTest, PicturesOfAnotherSceneAreNotShown) {
  ASSERT_TRUE(open(kLayers));
  desk::Preview preview(document());
  ASSERT_TRUE(QTest::qWaitFor([&] { return preview.isUpToDate(); }, 20000));
  preview.setFrame(29);
  ASSERT_TRUE(open("[scene]\nsize = [16, 9]\n"));
  EXPECT_EQ(preview.picture().state, nullptr);
  EXPECT_EQ(preview.frame(), 0);
  QObject::connect(&preview, &desk::Preview::pictureChanged,
                   [&] { EXPECT_EQ(preview.picture().image.width(), 16); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return preview.isUpToDate(); }, 20000));
}

TEST_F(PainterTest, TheLastFrameAskedForIsShown) {
  const desk::SharedState state = stateOf(kLayers);
  desk::FrameRenderer renderer;
  QSignalSpy spy(&renderer, &desk::FrameRenderer::rendered);
  std::uint64_t last = 0;
  for (int i = 0; i < 200; ++i) last = renderer.request({state, i % 30});
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return !spy.empty() && spy.back()[0].value<desk::Picture>().request == last; }, 20000));
  EXPECT_LT(spy.size(), 200);
  EXPECT_EQ(spy.back()[0].value<desk::Picture>().frame, 199 % 30);
}

}  // namespace
