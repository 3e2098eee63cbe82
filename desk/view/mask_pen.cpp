#include "desk/view/mask_pen.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>

namespace desk {
namespace {

constexpr double kClosingReach = 9;  // pixels of the screen, from the first vertex
constexpr int kLeastBend = 4;        // that a drag bends by; below it is a click

}  // namespace

MaskPen::MaskPen(const QRectF& sceneRect) : area_(sceneRect), outline_(new Outline(this)) {
  setFlags(ItemIsFocusable | ItemHasNoContents);
  setAcceptHoverEvents(true);
  setCursor(Qt::CrossCursor);
  setZValue(10);  // over all else
  shape_.closed = false;
}

void MaskPen::show(QPointF pointer) {
  QPainterPath path = pathOf(shape_);
  if (!shape_.vertices.empty()) {
    path.cubicTo(toPoint(shape_.vertices.back().out), pointer, pointer);
    path.addEllipse(toPoint(shape_.vertices.front().point), 3, 3);
  }
  outline_->setPath(path);
}

void MaskPen::end(bool closed) {
  if (shape_.vertices.size() < 2) return emit canceled();
  shape_.closed = closed;
  emit drawn(shape_);
}

void MaskPen::mousePressEvent(QGraphicsSceneMouseEvent* event) {
  const QPointF place = event->scenePos();
  if (shape_.vertices.size() > 1) {
    const QPointF way = place - toPoint(shape_.vertices.front().point);
    const double scale = scene()->views().first()->transform().m11();
    if (way.manhattanLength() * scale < kClosingReach) return end(true);
  }
  const scene::MaskPoint point = toMaskPoint(place);
  shape_.vertices.push_back({point, point, point});
  show(place);
}

void MaskPen::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
  const QPoint onScreen = event->screenPos() - event->buttonDownScreenPos(Qt::LeftButton);
  if (shape_.vertices.empty() || onScreen.manhattanLength() < kLeastBend) return;
  pull(shape_, shape_.vertices.size() - 1, event->scenePos());
  show(event->scenePos());
}

void MaskPen::mouseDoubleClickEvent(QGraphicsSceneMouseEvent*) {
  end(false);  // its first click has made the last vertex
}

void MaskPen::hoverMoveEvent(QGraphicsSceneHoverEvent* event) {
  show(event->scenePos());
}

void MaskPen::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return end(false);
    case Qt::Key_Escape:
      return emit canceled();
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      if (!shape_.vertices.empty()) shape_.vertices.pop_back();
      return outline_->setPath(pathOf(shape_));
    default:
      QGraphicsObject::keyPressEvent(event);
  }
}

}  // namespace desk
