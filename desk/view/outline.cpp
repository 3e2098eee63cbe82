#include "desk/view/outline.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QPainter>
#include <QWidget>

namespace desk {
namespace {

constexpr double kTouchWidth = 10;  // pixels of the screen

}  // namespace

Outline::Outline(QGraphicsItem* parent, Qt::PenStyle style)
    : QGraphicsObject(parent), style_(style) {
  setAcceptedMouseButtons(Qt::NoButton);
}

void Outline::setGrabbable() {
  setAcceptedMouseButtons(Qt::LeftButton);
  setCursor(Qt::PointingHandCursor);
}

void Outline::setPath(const QPainterPath& path) {
  prepareGeometryChange();
  path_ = path;
}

double Outline::screenPixel() const {
  return 1 / scene()->views().first()->transform().m11();
}

QRectF Outline::boundingRect() const {
  const double margin = kTouchWidth * screenPixel();
  return path_.boundingRect().adjusted(-margin, -margin, margin, margin);
}

QPainterPath Outline::shape() const {
  if (acceptedMouseButtons() == Qt::NoButton) return {};
  QPainterPathStroker stroker;
  stroker.setWidth(kTouchWidth * screenPixel());
  return stroker.createStroke(path_);
}

void Outline::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) {
  const double pixel = widget->devicePixelRatioF();
  painter->setRenderHint(QPainter::Antialiasing);
  QPen pen(QColor(0, 0, 0, 150), 3 * pixel);
  pen.setCosmetic(true);
  painter->strokePath(path_, pen);
  pen.setColor(QColor(255, 255, 255, 210));
  pen.setWidthF(1.2 * pixel);
  pen.setStyle(style_);
  painter->strokePath(path_, pen);
}

/// What is hidden during a drag gets no release.
bool Outline::sceneEvent(QEvent* event) {
  if (event->type() == QEvent::UngrabMouse) release();
  return QGraphicsObject::sceneEvent(event);
}

void Outline::release() {
  if (isGrabbed_) emit released();
  isGrabbed_ = false;
}

void Outline::cancel() {
  if (!isGrabbed_) return;
  isGrabbed_ = false;
  ungrabMouse();
  emit canceled();
}

void Outline::mousePressEvent(QGraphicsSceneMouseEvent* event) {
  event->accept();
}

void Outline::mouseMoveEvent(QGraphicsSceneMouseEvent* event) {
  if (!isGrabbed_) emit grabbed();
  isGrabbed_ = true;
  emit dragged(event->scenePos() - event->lastScenePos());
}

void Outline::mouseReleaseEvent(QGraphicsSceneMouseEvent*) {
  release();
}

void Outline::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) {
  emit doubleClicked(event->scenePos());
}

void Outline::contextMenuEvent(QGraphicsSceneContextMenuEvent* event) {
  emit menuWanted(event->screenPos(), event->scenePos());
}

}  // namespace desk
