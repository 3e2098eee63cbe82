#include "desk/view/handle.h"

#include <QCursor>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>
#include <cmath>

namespace desk {
namespace {

constexpr double kRadius = 5.5;  // of what is drawn, pixels of the screen
constexpr double kTouch = 9;     // of what is touched
constexpr int kLeastWay = 3;     // pixels of the screen, from which on it is dragged
constexpr double kLongWay = 10;  // pixels of the frame, with Shift held

/// By which an arrow key moves; null for other keys.
QPointF wayOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return {-1, 0};
    case Qt::Key_Right:
      return {1, 0};
    case Qt::Key_Up:
      return {0, -1};
    case Qt::Key_Down:
      return {0, 1};
    default:
      return {};
  }
}

}  // namespace

Handle::Handle(Look look, const QString& name, QGraphicsItem* parent)
    : QGraphicsObject(parent), look_(look), name_(name) {
  setFlags(ItemIgnoresTransformations | ItemIsFocusable);
  setAcceptHoverEvents(true);
  setAcceptedMouseButtons(Qt::LeftButton);
  setCursor(Qt::SizeAllCursor);
  setToolTip(name);
  setZValue(look == Look::kTangent ? 2 : 3);
}

QRectF Handle::boundingRect() const {
  return {-kTouch, -kTouch, 2 * kTouch, 2 * kTouch};
}

void Handle::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) {
  const QColor accent = widget->palette().color(QPalette::Highlight);
  const bool isFilled = hasFocus() || isHovered_ || isGrabbed_;
  painter->setRenderHint(QPainter::Antialiasing);
  const auto draw = [&] {
    const double r = look_ == Look::kTangent ? kRadius - 1.5 : kRadius;
    if (look_ == Look::kVertex) {
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
  if (look_ == Look::kPoint) painter->drawPoint(0, 0);
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
  if (event->modifiers().testFlag(Qt::ShiftModifier)) {
    (std::abs(way.x()) < std::abs(way.y()) ? way.rx() : way.ry()) = 0;
  }
  emit dragged(
      {start_ + way, event->modifiers(), !event->modifiers().testFlag(Qt::ControlModifier)});
}

void Handle::mouseReleaseEvent(QGraphicsSceneMouseEvent*) {
  release();
}

void Handle::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) {
  mousePressEvent(event);
  emit doubleClicked();
}

void Handle::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
  setFocus(Qt::MouseFocusReason);
  emit menuWanted(event->screenPos());
}

void Handle::keyPressEvent(QKeyEvent* event) {
  const QPointF way = wayOf(event->key());
  if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
    emit removeWanted();
  } else if (way.isNull()) {
    QGraphicsObject::keyPressEvent(event);
  } else {
    grab();
    const bool isLong = event->modifiers().testFlag(Qt::ShiftModifier);
    emit dragged({scenePos() + way * (isLong ? kLongWay : 1), event->modifiers(), false});
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
