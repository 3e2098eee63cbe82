// Playing, and keys moved, copied, eased and removed on the timeline.
#include "desk/timeline/timeline_panel.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QUndoStack>

#include "tests/desk/desk_test.h"

namespace {

constexpr char kKeys[] = R"([scene]
size = [64, 36]
frames = 100
[params]
"Size" = [ { frame = 0, value = 10 }, { frame = 20, value = 30, ease = "in" } ]  # grows
"Intensity" = [ { frame = 5, value = 1 }, { frame = 95, value = 2 } ]
)";

class TimelineTest : public tests::DeskTest {
 protected:
  void start(const std::string& text) {
    ASSERT_TRUE(open(text)) << problem();
    preview.emplace(document());
    playback.emplace(*preview);
    keyView.emplace(*preview, *playback);
  }
  std::vector<double> times(brisel::ParamIndex parameter) {
    std::vector<double> found;
    for (const desk::ParamKey& key : document().keys(0, parameter)) found.push_back(key.time);
    return found;
  }
  using Times = std::vector<double>;

  std::optional<desk::Preview> preview;
  std::optional<desk::Playback> playback;
  std::optional<desk::KeyView> keyView;
};

TEST_F(TimelineTest, MovesAllSelectedKeysAlikeAndNoneOutOfTheScene) {
  start(kKeys);
  keyView->selectAll();
  keyView->moveSelected(3);
  EXPECT_EQ(times(brisel::kSize), (Times{3, 23}));
  EXPECT_EQ(times(brisel::kIntensity), (Times{8, 98}));
  keyView->moveSelected(10);  // but there is room for one frame
  EXPECT_EQ(times(brisel::kSize), (Times{4, 24}));
  keyView->moveSelected(-50);
  EXPECT_EQ(times(brisel::kSize), (Times{0, 20}));
  EXPECT_EQ(times(brisel::kIntensity), (Times{5, 95}));
  EXPECT_EQ(document().undoStack().count(), 3);
  EXPECT_NE(text().find("# grows"), std::string::npos);
}

TEST_F(TimelineTest, CopiesPastesEasesAndRemovesAsOneStepEach) {
  start(kKeys);
  keyView->selectAll();
  keyView->copySelected();
  preview->setFrame(50);
  keyView->paste();
  EXPECT_EQ(times(brisel::kSize), (Times{0, 20, 50, 70}));
  EXPECT_EQ(times(brisel::kIntensity), (Times{5, 55, 95, 145}));
  keyView->easeSelected({.hold = true});
  EXPECT_TRUE(document().keys(0, brisel::kSize)[3].ease.hold);
  EXPECT_FALSE(document().keys(0, brisel::kSize)[1].ease.hold) << "which was not selected";
  keyView->removeSelected();
  EXPECT_EQ(times(brisel::kSize), (Times{0, 20}));
  EXPECT_FALSE(keyView->hasSelection());
  EXPECT_EQ(document().undoStack().count(), 3);
  keyView->toNextKey();
  EXPECT_EQ(preview->frame(), 95);
  keyView->toPreviousKey();
  EXPECT_EQ(preview->frame(), 20);
}

TEST_F(TimelineTest, DragsAKeyAsOneStep) {
  start(kKeys);
  keyView->resize(900, 200);
  keyView->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&*keyView));
  QWidget* area = keyView->viewport();
  QPoint at(0, 2 * keyView->fontMetrics().height() + 8);  // on the row below the ruler
  while (!keyView->hasSelection() && at.x() < area->width()) {
    at.rx() += 2;
    QTest::mouseClick(area, Qt::LeftButton, {}, at);
  }
  QTest::mousePress(area, Qt::LeftButton, {}, at);
  for (const int way : {30, 60, 100}) {
    const QPoint to = at + QPoint(way, 0);
    QMouseEvent move(QEvent::MouseMove, to, area->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     {});
    QCoreApplication::sendEvent(area, &move);
  }
  QTest::mouseRelease(area, Qt::LeftButton, {}, at + QPoint(100, 0));
  EXPECT_GT(times(brisel::kIntensity).front(), 5);
  EXPECT_EQ(document().undoStack().count(), 1);
  document().undoStack().undo();
  EXPECT_EQ(text(), kKeys);
}

TEST_F(TimelineTest, MovesKeysOfAMask) {
  start(R"([scene]
frames = 100
[mask]
path = [ { frame = 0, value = "M 0 0 L 9 9" }, { frame = 40, value = "M 5 5 L 7 7" } ]
)");
  keyView->selectAll();
  keyView->moveSelected(10);
  const auto mask = document().mask(0);
  ASSERT_TRUE(mask && mask->keys.size() == 2);
  EXPECT_EQ(mask->keys[1].time, 50);
  EXPECT_EQ(mask->keys[1].value.vertices[0].point.x, 5);
}

TEST_F(TimelineTest, CopyOverOthersGiveWay) {
  const std::vector<desk::ParamKey> keys{
      {{.time = 0}, {1}}, {{.time = 4}, {2}}, {{.time = 8}, {3}}};
  const desk::MovedKeys moved = desk::movedKeys(keys, {0, 4}, 4, false);
  ASSERT_EQ(moved.keys.size(), 2u);
  EXPECT_EQ(moved.keys[0].value[0], 1);
  EXPECT_EQ(moved.keys[1].value[0], 2);
  EXPECT_EQ(moved.chosen, (desk::KeyTimes{4, 8}));
  EXPECT_EQ(desk::movedKeys(keys, {0}, 2, true).keys.size(), 4u);
}

TEST_F(TimelineTest, PlaysInRealTimeWhateverAPictureTakes) {
  start("[scene]\nsize = [1280, 720]\nframes = 5000\nfps = 100\n");
  QElapsedTimer clock;
  clock.start();
  playback->forward();
  QTest::qWait(700);
  const double due = static_cast<double>(clock.elapsed()) / 10;
  // It may lag by the picture being made, of which a busy machine may make it wait.
  EXPECT_LE(preview->frame(), due + 1);
  EXPECT_GE(preview->frame(), due / 3);
  playback->pause();
  const int frame = preview->frame();
  QTest::qWait(50);
  EXPECT_EQ(preview->frame(), frame);
  EXPECT_EQ(playback->picturesPerSecond(), 0);
}

TEST_F(TimelineTest, StaysBetweenInAndOut) {
  start("[scene]\nsize = [16, 9]\nframes = 100\nfps = 1000\n");
  playback->setIn(10);
  playback->setOut(20);
  QSignalSpy frames(&*preview, &desk::Preview::frameChanged);
  playback->toggle();
  EXPECT_EQ(preview->frame(), 10);
  ASSERT_TRUE(QTest::qWaitFor([&] { return frames.size() > 20; }));
  for (const QList<QVariant>& frame : frames) {
    EXPECT_TRUE(frame[0].toInt() >= 10 && frame[0].toInt() <= 20) << frame[0].toInt();
  }
  playback->setLoops(false);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !playback->isPlaying(); }));
  EXPECT_EQ(preview->frame(), 20);
  playback->backward();
  playback->backward();
  EXPECT_EQ(playback->speed(), -2);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !playback->isPlaying(); }));
  EXPECT_EQ(preview->frame(), 10);
  document().setFrames(15);
  EXPECT_EQ(playback->out(), 14);
}

}  // namespace
