#include "desk/view/mask_pen.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "desk/view/arrow_keys.h"

namespace desk {
namespace {

constexpr double kClosingReach = 9;  // pixels of the screen, from the first vertex
constexpr int kLeastBend = 4;        // that a drag bends by; below it is a click
constexpr double kCrossArm = 10;

}  // namespace

MaskPen::MaskPen(const QRectF& sceneRect)
    : area_(sceneRect), outline_(new Outline(this)), pointer_(sceneRect.center()) {
  setFlags(ItemIsFocusable | ItemHasNoContents);
  setAcceptHoverEvents(true);
  setCursor(Qt::CrossCursor);
  setZValue(10);  // over all else
  shape_.closed = false;
}

void MaskPen::show() {
  QPainterPath path = pathOf(shape_);
  if (!shape_.vertices.empty()) {
    path.cubicTo(toPoint(shape_.vertices.back().out), pointer_, pointer_);
    path.addEllipse(toPoint(shape_.vertices.front().point), 3, 3);
  }
  if (isMovedByKeys_) {
    const double arm = kCrossArm / screenScale();
    for (const QPointF way : {QPointF(arm, 0), QPointF(0, arm)}) {
      path.moveTo(pointer_ - way);
      path.lineTo(pointer_ + way);
    }
  }
  outline_->setPath(path);
}

double MaskPen::screenScale() const {
  return scene()->views().first()->transform().m11();
}

void MaskPen::end(bool closed) {
  if (shape_.vertices.size() < 2) return emit canceled();
  shape_.closed = closed;
  emit drawn(shape_);
}

void MaskPen::putVertex() {
  if (shape_.vertices.size() > 1) {
    const QPointF way = pointer_ - toPoint(shape_.vertices.front().point);
    if (way.manhattanLength() * screenScale() < kClosingReach) return end(true);
  }
  const scene::MaskPoint point = toMaskPoint(pointer_);
  shape_.vertices.push_back({point, point, point});
  show();
}

void MaskPen::followMouse(QPointF place) {
  pointer_ = place;
  isMovedByKeys_ = false;
}

void MaskPen::mousePressEvent(QGraphicsSceneMouseEvent* event) {
  followMouse(event->scenePos());
  putVertex();
}

void MaskPen::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
  const QPoint onScreen = event->screenPos() - event->buttonDownScreenPos(Qt::LeftButton);
  if (shape_.vertices.empty() || onScreen.manhattanLength() < kLeastBend) return;
  pull(shape_, shape_.vertices.size() - 1, event->scenePos());
  followMouse(event->scenePos());
  show();
}

void MaskPen::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) {
  end(false);  // its first click has made the last vertex
}

void MaskPen::hoverMoveEvent(QGraphicsSceneHoverEvent* event) {
  followMouse(event->scenePos());
  show();
}

bool MaskPen::takes(const QKeyEvent& key) {
  if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
  constexpr std::array kTaken{Qt::Key_Space,  Qt::Key_Return,    Qt::Key_Enter,
                              Qt::Key_Escape, Qt::Key_Backspace, Qt::Key_Delete};
  return std::ranges::find(kTaken, key.key()) != kTaken.end() || !wayOfKey(key).isNull();
}

void MaskPen::keyPressEvent(QKeyEvent* event) {
  if (!takes(*event)) return QGraphicsObject::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Space:
      return putVertex();
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return end(event->modifiers().testFlag(Qt::ShiftModifier));
    case Qt::Key_Escape:
      return emit canceled();
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      if (!shape_.vertices.empty()) shape_.vertices.pop_back();
      return show();
    default:
      pointer_ += wayOfKey(*event);
      isMovedByKeys_ = true;
      show();
      emit moved(pointer_);
  }
}

}  // namespace desk
