// Points and masks dragged on the picture, by mouse and keyboard.
#include "desk/view/picture_view.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QUndoStack>
#include <cmath>

#include "tests/desk/desk_test.h"

namespace {

using scene::MaskShape;

TEST(MaskShapes, KeepTheOutlineWhereAVertexIsAdded) {
  MaskShape open = desk::circle({200, 150}, 90);
  open.closed = false;
  for (const MaskShape& before :
       {desk::circle({200, 150}, 90), open, desk::rectangle({10, 20, 300, 200})}) {
    const QPainterPath path = desk::pathOf(before);
    for (const double share : {0.1, 0.45, 0.9}) {
      const QPointF wanted = path.pointAtPercent(share);
      const desk::OutlinePlace place = desk::nearestPlace(before, wanted);
      const MaskShape after = desk::withVertex(before, place);
      ASSERT_EQ(after.vertices.size(), before.vertices.size() + 1);
      const QPointF added = desk::toPoint(after.vertices[place.vertex + 1].point);
      EXPECT_LT((added - wanted).manhattanLength(), 4) << share;
      for (double t = 0; t <= 1; t += 0.05) {
        const QPointF now = desk::pathOf(after).pointAtPercent(t);
        const desk::OutlinePlace nearest = desk::nearestPlace(before, now);
        const QPointF was =
            desk::toPoint(desk::withVertex(before, nearest).vertices[nearest.vertex + 1].point);
        EXPECT_LT((now - was).manhattanLength(), 4) << share << " at " << t;
      }
    }
  }
}

TEST(MaskShapes, BendEvenlyUntilBroken) {
  MaskShape shape = desk::rectangle({100, 100, 200, 100});
  desk::makeSmooth(shape, 1);
  const auto cross = [&] {
    const MaskShape::Vertex& v = shape.vertices[1];
    const QPointF in = desk::toPoint(v.in) - desk::toPoint(v.point);
    const QPointF out = desk::toPoint(v.out) - desk::toPoint(v.point);
    return (in.x() * out.y() - in.y() * out.x()) /
           (std::hypot(in.x(), in.y()) * std::hypot(out.x(), out.y()));
  };
  EXPECT_NEAR(cross(), 0, 0.01);
  desk::bend(shape, 1, desk::Side::Out, {350, 60}, false);
  EXPECT_NEAR(cross(), 0, 0.01);
  EXPECT_EQ(shape.vertices[1].out.x, 350);
  desk::bend(shape, 1, desk::Side::In, {300, 20}, true);
  EXPECT_GT(std::abs(cross()), 0.1);
  desk::bend(shape, 1, desk::Side::In, {250, 100}, false);  // stays broken
  EXPECT_EQ(shape.vertices[1].out.x, 350);
  desk::makeCorner(shape, 1);
  EXPECT_TRUE(desk::isCorner(shape.vertices[1]));
}

TEST(SnapGuides, TakeTheNearestMarkOfEachAxisWithinReach) {
  const std::vector<QPointF> marks{{0, 0}, {100, 50}, {104, 200}};
  EXPECT_EQ(desk::snapTo({103, 47}, marks, 5).place, QPointF(104, 50));
  EXPECT_EQ(desk::snapTo({101, 120}, marks, 5).place, QPointF(100, 120));
  EXPECT_EQ(desk::snapTo({50, 120}, marks, 5).place, QPointF(50, 120));
}

class PictureViewTest : public tests::DeskTest {
 protected:
  void show(const std::string& text) {
    ASSERT_TRUE(open(text)) << problem();
    preview.emplace(document());
    view.emplace(*preview);
    view->resize(664, 384);  // the frame at its size, with the margins of a fitted one
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&*view));
  }
  QPoint onView(QPointF place) const { return view->mapFromScene(place); }
  void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* area = view->viewport();
    QTest::mousePress(area, Qt::LeftButton, modifiers, onView(from));
    for (const double share : {0.3, 0.7, 1.0}) moveTo(from + (to - from) * share, modifiers);
    QTest::mouseRelease(area, Qt::LeftButton, modifiers, onView(to));
  }
  void moveTo(QPointF place, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* area = view->viewport();
    const QPoint at = onView(place);
    QMouseEvent move(QEvent::MouseMove, at, area->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                     modifiers);
    QCoreApplication::sendEvent(area, &move);
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, int times = 1) {
    while (times-- > 0) QTest::keyClick(&*view, key, modifiers);
  }
  /// By Tab alone.
  void goTo(const char* handle) {
    constexpr int kMostHandles = 30;
    for (int i = 0; i < kMostHandles && !focus().startsWith(handle); ++i) press(Qt::Key_Tab);
    EXPECT_TRUE(focus().startsWith(handle)) << focus().toStdString();
  }
  QString focus() const { return view->accessibleDescription(); }
  QPointF start() {
    const scene::ParamValue value = document().value(0, brisel::kStart, preview->frame());
    return {value[0] * 640, value[1] * 360};
  }
  std::vector<MaskShape::Vertex> vertices() {
    const auto mask = document().mask(0);
    return mask ? scene::shapeAt(*mask, preview->frame()).vertices
                : std::vector<MaskShape::Vertex>();
  }

  std::optional<desk::Preview> preview;
  std::optional<desk::PictureView> view;
};

constexpr char kPoint[] = R"([scene]
size = [640, 360]
[params]
"Standard path" = "Point"
"Start" = [0.25, 0.25]  # stays
)";

TEST_F(PictureViewTest, DragsAPointAsOneStepThatSnaps) {
  show(kPoint);
  ASSERT_NEAR(view->zoom(), 1, 0.01);
  drag({160, 90}, {317, 250});
  EXPECT_NEAR(start().x(), 320, 0.1) << "the middle is 3 pixels away";
  EXPECT_NEAR(start().y(), 250, 1.5);
  EXPECT_NE(text().find("# stays"), std::string::npos);
  EXPECT_EQ(document().undoStack().count(), 1);
  drag(start(), {317, 100}, Qt::ControlModifier);
  EXPECT_NEAR(start().x(), 317, 1.5) << "with Ctrl it does not snap";
  document().undoStack().undo();
  document().undoStack().undo();
  EXPECT_EQ(text(), kPoint);
}

TEST_F(PictureViewTest, MovesAPointByArrowKeysAndKeysIt) {
  show(kPoint);
  document().addKey(0, brisel::kStart, 0);
  preview->setFrame(50);
  view->setFocus();
  QTest::keyClick(&*view, Qt::Key_Tab);
  EXPECT_TRUE(view->accessibleDescription().startsWith("Start at 160, 90"));
  QTest::keyClick(&*view, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&*view, Qt::Key_Up);
  EXPECT_NEAR(start().x(), 170, 0.1);
  EXPECT_NEAR(start().y(), 89, 0.1);
  EXPECT_EQ(document().keys(0, brisel::kStart).size(), 2u) << "one at frame 50 now";
  EXPECT_EQ(preview->frame(), 50);
}

TEST_F(PictureViewTest, HidesPointsWithoutEffect) {
  show(kPoint);
  const auto shown = [&] {
    int handles = 0;
    for (QGraphicsItem* item : view->scene()->items()) {
      handles += item->isVisible() && dynamic_cast<desk::Handle*>(item) != nullptr ? 1 : 0;
    }
    return handles;
  };
  const std::array<int, 8> expected{1, 4, 2, 4, 2, 0, 0, 0};  // by item
  for (std::size_t item = 0; item < expected.size(); ++item) {
    document().setValue(0, brisel::kStandardPath, {static_cast<double>(item + 1)}, 0);
    EXPECT_EQ(shown(), expected[item]) << "item " << item + 1;
  }
}

TEST_F(PictureViewTest, EditsAMask) {
  show(kPoint);
  view->mask().makeRectangle();
  ASSERT_EQ(vertices().size(), 4u);
  EXPECT_EQ(vertices()[0].point.x, 160);
  drag({160, 90}, {60, 40});
  EXPECT_EQ(document().undoStack().count(), 2);
  EXPECT_NEAR(vertices()[0].point.x, 60, 1.5);
  drag({480, 180}, {500, 190});  // the right side takes all along
  EXPECT_NEAR(vertices()[0].point.x, 80, 2.5);
  EXPECT_NEAR(vertices()[2].point.y, 280, 2.5);

  QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, onView({500, 190}));
  ASSERT_EQ(vertices().size(), 5u);
  QTest::keyClick(&*view, Qt::Key_Left, Qt::ShiftModifier);  // the new vertex has the focus
  EXPECT_NEAR(vertices()[2].point.x, 490, 2.5);
  QTest::keyClick(&*view, Qt::Key_Delete);
  EXPECT_EQ(vertices().size(), 4u);
  view->mask().remove();
  EXPECT_EQ(vertices().size(), 0u);
  while (document().undoStack().canUndo()) document().undoStack().undo();
  EXPECT_EQ(text(), kPoint);
}

TEST_F(PictureViewTest, OutlivesAMaskThatGoesOrCannotBeEdited) {
  show(kPoint);
  view->mask().makeRectangle();
  const std::string masked = text();
  document().setText({QString::fromStdString(masked + "rubbish = = 3\n"), document().path()},
                     "Damage");
  QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, onView({160, 200}));  // the last side
  EXPECT_NE(problem(), "");
  EXPECT_EQ(vertices().size(), 4u);
  document().undoStack().undo();

  for (const QPointF place : {QPointF(480, 200), QPointF(480, 270)}) {  // a side and a vertex
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, onView(place));
    moveTo(place + QPointF(20, 20));
    EXPECT_NE(text(), masked);
    while (document().undoStack().canUndo()) document().undoStack().undo();
    moveTo(place + QPointF(40, 40));
    EXPECT_EQ(text(), kPoint);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, onView(place));
    document().undoStack().redo();
    EXPECT_EQ(text(), masked);
  }

  QTest::mousePress(view->viewport(), Qt::LeftButton, {}, onView({480, 200}));
  moveTo({500, 220});
  view->mask().hide();  // which ends the drag and its step
  const int steps = document().undoStack().count();
  document().setSize(320, 180);
  document().setSize(640, 360);
  EXPECT_EQ(document().undoStack().count(), steps + 2);
}

TEST_F(PictureViewTest, AddsAVertexToAllKeysOfAMask) {
  show(std::string(kPoint) + R"([mask]
path = [ { frame = 0, value = "M 100 100 L 300 100 L 300 300 Z" },
         { frame = 40, value = "M 200 100 L 400 100 L 400 300 Z" } ]
)");
  QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, onView({200, 100}));
  const auto mask = document().mask(0);
  ASSERT_EQ(mask->keys.size(), 2u);
  for (const scene::Mask::Key& key : mask->keys) {
    ASSERT_EQ(key.value.vertices.size(), 4u);
    EXPECT_NEAR(key.value.vertices[1].point.x, key.time == 0 ? 200 : 300, 3);
  }
}

TEST_F(PictureViewTest, DrawsAMaskWithThePen) {
  show(kPoint);
  const auto click = [&](QPointF place) {
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, onView(place));
  };
  view->setFocus();
  view->mask().draw();
  for (const QPointF place : {QPointF(50, 50), QPointF(200, 60), QPointF(120, 200)}) click(place);
  click({52, 51});  // the first again
  EXPECT_EQ(vertices().size(), 3u);
  EXPECT_TRUE(document().mask(0)->keys.front().value.closed);

  view->mask().draw();
  click({300, 50});
  click({400, 60});
  QTest::keyClick(&*view, Qt::Key_Return);
  EXPECT_EQ(vertices().size(), 2u);
  EXPECT_FALSE(document().mask(0)->keys.front().value.closed);
  view->mask().draw();
  click({300, 50});
  QTest::keyClick(&*view, Qt::Key_Escape);
  EXPECT_EQ(document().undoStack().count(), 2);
}

TEST_F(PictureViewTest, BendsAVertexWithCtrlAndShift) {
  show(kPoint);
  view->mask().makeRectangle();
  constexpr auto kBend = Qt::ControlModifier | Qt::ShiftModifier;
  drag({160, 90}, {210, 60}, kBend);
  const auto arms = [&] {
    const MaskShape::Vertex v = vertices()[0];
    return std::pair(desk::toPoint(v.in) - desk::toPoint(v.point),
                     desk::toPoint(v.out) - desk::toPoint(v.point));
  };
  EXPECT_NEAR(arms().second.x(), 50, 2);
  EXPECT_NEAR(arms().second.y(), -30, 2);
  EXPECT_EQ(arms().first, -arms().second);
  EXPECT_EQ(vertices()[0].point.x, 160);
  drag({210, 60}, {160, 140});  // the other side turns along
  EXPECT_LT(arms().first.y(), -40);
  drag({160, 140}, {240, 90}, kBend);  // but not with both held
  EXPECT_NEAR(arms().second.x(), 80, 2);
  EXPECT_LT(arms().first.y(), -40);
  EXPECT_EQ(document().undoStack().count(), 4);
}

TEST_F(PictureViewTest, DrawsAndEditsAMaskByKeysAlone) {
  show(kPoint);
  view->setFocus();
  view->mask().draw();
  press(Qt::Key_Space);  // in the middle
  press(Qt::Key_Right, Qt::ShiftModifier, 10);
  press(Qt::Key_Space);
  press(Qt::Key_Down, {}, 50);
  EXPECT_TRUE(focus().startsWith("Pen at 420, 230")) << focus().toStdString();
  press(Qt::Key_Space);
  press(Qt::Key_Return, Qt::ShiftModifier);
  ASSERT_EQ(vertices().size(), 3u);
  EXPECT_TRUE(document().mask(0)->keys.front().value.closed);
  EXPECT_EQ(desk::toPoint(vertices()[2].point), QPointF(420, 230));

  goTo("Vertex 1 at");
  press(Qt::Key_Insert);
  ASSERT_EQ(vertices().size(), 4u);
  EXPECT_TRUE(focus().startsWith("Vertex 2 at 370, 180")) << focus().toStdString();
  press(Qt::Key_Return);
  EXPECT_FALSE(desk::isCorner(vertices()[1]));
  const QPointF out = desk::toPoint(vertices()[1].out);
  goTo("Vertex 2, bend before");
  press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_GT(vertices()[1].out.y, out.y()) << "turns along";
  press(Qt::Key_Delete);
  EXPECT_EQ(desk::toPoint(vertices()[1].in), QPointF(370, 180));
  EXPECT_FALSE(desk::isCorner(vertices()[1]));
  goTo("Vertex 2, bend after");
  press(Qt::Key_Delete);
  EXPECT_TRUE(desk::isCorner(vertices()[1]));
  EXPECT_TRUE(focus().startsWith("Vertex 2 at")) << focus().toStdString();
  goTo("Vertex 4 at");
  press(Qt::Key_Delete);
  EXPECT_TRUE(focus().startsWith("Vertex 3 at")) << "the last one now, " << focus().toStdString();
  press(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(vertices()[2].point.x, 410);
  EXPECT_EQ(document().undoStack().count(), 8);
  EXPECT_EQ(preview->frame(), 0);
  while (document().undoStack().canUndo()) document().undoStack().undo();
  EXPECT_EQ(text(), kPoint);

  view->mask().draw();
  press(Qt::Key_Space);
  press(Qt::Key_Left, Qt::ShiftModifier, 2);
  press(Qt::Key_Space);
  press(Qt::Key_Return);
  goTo("Vertex 2 at");
  press(Qt::Key_Insert);  // an open end goes on
  ASSERT_EQ(vertices().size(), 3u);
  EXPECT_EQ(desk::toPoint(vertices()[2].point), QPointF(290, 180));
}

TEST_F(PictureViewTest, EscapeTakesADragBack) {
  show(kPoint);
  view->mask().makeRectangle();
  document().setValue(0, brisel::kSize, {20}, 0);
  document().undoStack().undo();
  const std::string before = text();
  for (const QPointF place : {QPointF(160, 90), QPointF(480, 200)}) {  // a vertex, a side
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, onView(place));
    moveTo(place + QPointF(30, 20));
    EXPECT_NE(text(), before);
    press(Qt::Key_Escape);
    EXPECT_EQ(text(), before);
    moveTo(place + QPointF(60, 60));
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, onView(place));
    EXPECT_EQ(text(), before);
    EXPECT_EQ(document().undoStack().count(), 1) << "and nothing to redo";
  }
  view->mask().remove();
  QTest::mousePress(view->viewport(), Qt::LeftButton, {}, onView(start()));
  moveTo({300, 300});
  press(Qt::Key_Escape);
  QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, onView({300, 300}));
  EXPECT_EQ(start(), QPointF(160, 90));
  drag({160, 90}, {300, 250});
  EXPECT_EQ(document().undoStack().count(), 3) << "a drag goes on as ever";
}

TEST_F(PictureViewTest, ZoomsPansAndFits) {
  show(kPoint);
  view->setZoom(4);
  EXPECT_NEAR(view->zoom(), 4, 1e-6);
  const QPoint corner = view->mapFromScene(0, 0);
  view->pan({-80, 30});
  EXPECT_EQ(view->mapFromScene(0, 0), corner + QPoint(-80, 30));
  view->resize(344, 400);
  EXPECT_NEAR(view->zoom(), 4, 1e-6) << "only a fitted frame follows";
  view->fit();
  EXPECT_NEAR(view->zoom(), 0.5, 0.01);
  document().setSize(320, 180);
  EXPECT_NEAR(view->zoom(), 1, 0.01);
}

}  // namespace
