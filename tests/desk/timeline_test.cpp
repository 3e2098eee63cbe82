// Playing, and keys moved, copied, eased and removed on the timeline.
#include "desk/timeline/timeline_panel.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QUndoStack>
#include <cmath>

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
  static constexpr int kIntensityRow = 0;
  static constexpr int kSizeRow = 1;

  void show(const std::string& text) {
    start(text);
    keyView->resize(900, 200);
    keyView->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&*keyView));
  }
  /// Of a scene with 100 frames.
  QPoint at(int row, int frame) {
    const QFontMetrics metrics = keyView->fontMetrics();
    const int left = 26 * metrics.averageCharWidth();
    const double perFrame = (keyView->viewport()->width() - left - 20) / 99.0;
    return {left + 10 + static_cast<int>(std::lround(frame * perFrame)),
            2 * metrics.height() + row * (metrics.height() + 6) + metrics.height() / 2};
  }
  void moveTo(QPoint place, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* area = keyView->viewport();
    QMouseEvent move(QEvent::MouseMove, place, area->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, modifiers);
    QCoreApplication::sendEvent(area, &move);
  }
  void drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mousePress(keyView->viewport(), Qt::LeftButton, modifiers, from);
    for (const double share : {0.4, 0.8, 1.0}) moveTo(from + (to - from) * share, modifiers);
    QTest::mouseRelease(keyView->viewport(), Qt::LeftButton, modifiers, to);
  }

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

TEST_F(TimelineTest, LeavesTheLastValuesWhereAllKeysAreRemoved) {
  start(kKeys);
  keyView->selectAll();
  keyView->removeSelected();
  EXPECT_EQ(document().keyedParameters(0), std::vector<brisel::ParamIndex>());
  EXPECT_EQ(document().value(0, brisel::kSize, 0)[0], 30);
  EXPECT_EQ(document().value(0, brisel::kIntensity, 0)[0], 2);
  EXPECT_EQ(document().undoStack().count(), 1);
}

TEST_F(TimelineTest, DragsKeysByTheMouseAsOneStep) {
  show(kKeys);
  const struct {
    const char* what;
    QPoint from;
    QPoint to;
    Qt::KeyboardModifiers modifiers;
    Times size;
    Times intensity;
  } drags[] = {
      {"one key", at(kSizeRow, 20), at(kSizeRow, 50), {}, {0, 50}, {5, 95}},
      {"a copy", at(kSizeRow, 20), at(kSizeRow, 50), Qt::ControlModifier, {0, 20, 50}, {5, 95}},
      {"onto another", at(kSizeRow, 0), at(kSizeRow, 20), {}, {20}, {5, 95}},
      {"a copy onto another",
       at(kSizeRow, 0),
       at(kSizeRow, 20),
       Qt::ControlModifier,
       {0, 20},
       {5, 95}},
      {"before the first frame", at(kIntensityRow, 5), {-300, 60}, {}, {0, 20}, {0, 95}},
      {"past the last frame", at(kIntensityRow, 95), {2000, 60}, {}, {0, 20}, {5, 99}},
  };
  for (const auto& [what, from, to, modifiers, size, intensity] : drags) {
    SCOPED_TRACE(what);
    drag(from, to, modifiers);
    EXPECT_EQ(times(brisel::kSize), size);
    EXPECT_EQ(times(brisel::kIntensity), intensity);
    EXPECT_EQ(document().undoStack().index(), 1);
    document().undoStack().undo();
    EXPECT_EQ(text(), kKeys);
  }
  drag(at(kIntensityRow, 2), at(kSizeRow, 30));  // around three of the keys
  drag(at(kSizeRow, 20), at(kSizeRow, 30));
  EXPECT_EQ(times(brisel::kSize), (Times{0, 30}));
  EXPECT_EQ(times(brisel::kIntensity), (Times{15, 95}));
}

TEST_F(TimelineTest, ScrollsWhileADragIsHeldBeyondItsEdge) {
  show(kKeys);
  const QPoint key = at(kIntensityRow, 5);
  keyView->zoomBy(4);  // around frame 0
  const QPoint pressed{key.x() + 3 * (key.x() - at(kIntensityRow, 0).x()), key.y()};
  QTest::mousePress(keyView->viewport(), Qt::LeftButton, {}, pressed);
  moveTo({keyView->viewport()->width() + 30, key.y()});
  EXPECT_LT(times(brisel::kIntensity)[0], 40) << "a quarter of the frames, and a bit";
  EXPECT_TRUE(QTest::qWaitFor([&] { return times(brisel::kIntensity)[0] > 60; }));
  QTest::keyClick(&*keyView, Qt::Key_Escape);
  EXPECT_EQ(text(), kKeys);
}

TEST_F(TimelineTest, AClickSelectsAndWithShiftAlsoDeselects) {
  show(kKeys);
  const auto click = [&](QPoint place, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(keyView->viewport(), Qt::LeftButton, modifiers, place);
  };
  /// Those that a move takes along.
  const auto moved = [&] {
    keyView->moveSelected(1);
    auto found = std::pair(times(brisel::kSize), times(brisel::kIntensity));
    keyView->moveSelected(-1);
    return found;
  };
  click(at(kSizeRow, 20));
  click(at(kIntensityRow, 5), Qt::ShiftModifier);
  EXPECT_EQ(moved(), std::pair(Times({0, 21}), Times({6, 95})));
  click(at(kSizeRow, 20), Qt::ShiftModifier);
  EXPECT_EQ(moved(), std::pair(Times({0, 20}), Times({6, 95})));
  click(at(kSizeRow, 0), Qt::ShiftModifier);
  click(at(kSizeRow, 0));  // it alone
  EXPECT_EQ(moved(), std::pair(Times({1, 20}), Times({5, 95})));
  click(at(kSizeRow, 0), Qt::ShiftModifier);
  EXPECT_FALSE(keyView->hasSelection());
}

TEST_F(TimelineTest, EscapeTakesADragBack) {
  show(kKeys);
  keyView->selectAll();
  const auto dragAndEscape = [&](QPoint from, QPoint to) {
    QTest::mousePress(keyView->viewport(), Qt::LeftButton, {}, from);
    moveTo(to);
    auto state = std::pair(text(), preview->frame());
    QTest::keyClick(&*keyView, Qt::Key_Escape);
    moveTo(from);
    moveTo(to);
    QTest::mouseRelease(keyView->viewport(), Qt::LeftButton, {}, to);
    return state;
  };
  EXPECT_NE(dragAndEscape(at(kSizeRow, 0), at(kSizeRow, 4)).first, kKeys);
  EXPECT_EQ(text(), kKeys);
  EXPECT_EQ(document().undoStack().count(), 0);
  EXPECT_TRUE(keyView->hasSelection());
  preview->setFrame(7);
  EXPECT_EQ(dragAndEscape(QPoint(at(0, 30).x(), 3), QPoint(at(0, 60).x(), 3)).second, 60);
  EXPECT_EQ(preview->frame(), 7);
  playback->setIn(20);
  dragAndEscape(QPoint(at(0, 20).x(), 3), QPoint(at(0, 60).x(), 3));
  EXPECT_EQ(playback->in(), 20);
  dragAndEscape(at(kSizeRow, 80), at(kSizeRow, 60));
  EXPECT_TRUE(keyView->hasSelection()) << "as before the press";
  document().setFrames(50);
  document().setFrames(60);
  EXPECT_EQ(document().undoStack().count(), 2) << "no gesture is left open";
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
  QObject::connect(&*preview, &desk::Preview::frameChanged, &*preview, [this](int frame) {
    EXPECT_EQ(preview->picture().frame, frame) << "the number of the picture shown";
  });
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

TEST_F(TimelineTest, PlaysOnWhileValuesAreTurned) {
  start("[scene]\nsize = [64, 36]\nframes = 5000\nfps = 100\n");
  playback->forward();
  for (int i = 1; i <= 60; ++i) {
    document().setValue(0, brisel::kGravity, {i / 10.0}, 0);
    QTest::qWait(5);
  }
  EXPECT_GT(preview->frame(), 10);
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
