#include "desk/view/handle.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>
#include <cmath>

#include "desk/view/arrow_keys.h"

namespace desk {
namespace {

constexpr double kRadius = 5.5;  // of what is drawn, pixels of the screen
constexpr double kTouch = 9;     // of what is touched
constexpr int kLeastWay = 3;     // pixels of the screen, from which on it is dragged

}  // namespace

Handle::Handle(Look look, const QString& name, QGraphicsItem* parent)
    : QGraphicsObject(parent), look_(look), name_(name) {
  setFlags(ItemIgnoresTransformations | ItemIsFocusable);
  setAcceptHoverEvents(true);
  setAcceptedMouseButtons(Qt::LeftButton);
  setCursor(Qt::SizeAllCursor);
  setToolTip(name + "\n" + hint());
  setZValue(look == Look::Tangent ? 2 : 3);
}

QString Handle::hint() const {
  switch (look_) {
    case Look::Vertex:
      return "Ctrl+Shift and a drag bends; Return: corner or bend; Insert, Delete: more or less";
    case Look::Tangent:
      return "Ctrl+Shift and a drag bends this side alone; Delete: a straight side";
    default:
      return "Ctrl and a drag does not snap; Shift: level or upright";
  }
}

bool Handle::takes(const QKeyEvent& key) const {
  if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
  switch (key.key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return look_ != Look::Point;
    case Qt::Key_Insert:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return look_ == Look::Vertex;
    default:
      return !wayOfKey(key).isNull();
  }
}

QRectF Handle::boundingRect() const {
  return {-kTouch, -kTouch, 2 * kTouch, 2 * kTouch};
}

void Handle::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) {
  const QColor accent = widget->palette().color(QPalette::Highlight);
  const bool isFilled = hasFocus() || isHovered_ || isGrabbed_;
  painter->setRenderHint(QPainter::Antialiasing);
  const auto draw = [&] {
    const double r = look_ == Look::Tangent ? kRadius - 1.5 : kRadius;
    if (look_ == Look::Vertex) {
      painter->drawRect(QRectF(-r + 1, -r + 1, 2 * r - 2, 2 * r - 2));
    } else {
      painter->drawEllipse(QPointF(), r, r);
    }
  };
  // A dark rim and a light one are seen on any picture.
  painter->setPen(QPen(QColor(0, 0, 0, 160), 3.5));
  painter->setBrush(Qt::NoBrush);
  draw();
  painter->setPen(QPen(Qt::white, 1.5));
  painter->setBrush(isFilled ? accent : QColor(0, 0, 0, 90));
  draw();
  if (look_ == Look::Point) painter->drawPoint(0, 0);
}

void Handle::grab() {
  if (isGrabbed_) return;
  isGrabbed_ = true;
  emit grabbed();
}

void Handle::release() {
  if (!isGrabbed_) return;
  isGrabbed_ = false;
  update();
  emit released();
}

void Handle::cancel() {
  if (!isGrabbed_) return;
  isGrabbed_ = false;
  update();
  if (scene()->mouseGrabberItem() == this) ungrabMouse();
  emit canceled();
}

void Handle::mousePressEvent(QGraphicsSceneMouseEvent* event) {
  setFocus(Qt::MouseFocusReason);
  start_ = scenePos();
  offset_ = start_ - event->scenePos();
}

void Handle::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
  const QPoint onScreen = event->screenPos() - event->buttonDownScreenPos(Qt::LeftButton);
  if (!isGrabbed_ && onScreen.manhattanLength() < kLeastWay) return;  // a click's trembling
  grab();
  QPointF way = event->scenePos() + offset_ - start_;
  const bool holdsCtrl = event->modifiers().testFlag(Qt::ControlModifier);
  const bool holdsShift = event->modifiers().testFlag(Qt::ShiftModifier);
  if (holdsShift && !holdsCtrl) {
    (std::abs(way.x()) < std::abs(way.y()) ? way.rx() : way.ry()) = 0;
  }
  emit dragged({start_ + way, !holdsCtrl, holdsCtrl && holdsShift});
}

void Handle::mouseReleaseEvent(QGraphicsSceneMouseEvent*) {
  release();
}

void Handle::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) {
  mousePressEvent(event);
  emit activated();
}

void Handle::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
  setFocus(Qt::MouseFocusReason);
  emit menuWanted(event->screenPos());
}

void Handle::keyPressEvent(QKeyEvent* event) {
  if (!takes(*event)) return QGraphicsObject::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      return emit removeWanted();
    case Qt::Key_Insert:
      return emit addWanted();
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return emit activated();
    default:
      grab();
      emit dragged({scenePos() + wayOfKey(*event), false});
  }
}

void Handle::keyReleaseEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat()) release();
}

void Handle::focusInEvent(QFocusEvent* event) {
  QGraphicsObject::focusInEvent(event);
  emit focused();
}

void Handle::focusOutEvent(QFocusEvent* event) {
  QGraphicsObject::focusOutEvent(event);
  release();
}

void Handle::hoverEnterEvent(QGraphicsSceneHoverEvent*) {
  isHovered_ = true;
  update();
}

void Handle::hoverLeaveEvent(QGraphicsSceneHoverEvent*) {
  isHovered_ = false;
  update();
}

}  // namespace desk
