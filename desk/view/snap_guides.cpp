#include "desk/view/snap_guides.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QWidget>
#include <cmath>
#include <utility>

namespace desk {
namespace {

constexpr double kReachOnScreen = 7;  // pixels

}  // namespace

Snap snapTo(QPointF place, const std::vector<QPointF>& marks, double reach) {
  Snap snap{place, {}, {}};
  double nearestX = reach;
  double nearestY = reach;
  for (const QPointF& mark : marks) {
    if (const double x = std::abs(mark.x() - place.x()); x <= nearestX) {
      nearestX = x;
      snap.x = mark.x();
    }
    if (const double y = std::abs(mark.y() - place.y()); y <= nearestY) {
      nearestY = y;
      snap.y = mark.y();
    }
  }
  snap.place = {snap.x.value_or(place.x()), snap.y.value_or(place.y())};
  return snap;
}

SnapGuides::SnapGuides(QGraphicsRectItem* frame) : QGraphicsItem(frame), frame_(frame) {
  setZValue(1);
  setAcceptedMouseButtons(Qt::NoButton);
}

QPointF SnapGuides::snapped(QPointF place, std::vector<QPointF> others) {
  if (!snaps_) return place;
  const QRectF frame = frame_->rect();
  others.insert(others.end(), {frame.topLeft(), frame.center(), frame.bottomRight()});
  const double scale = scene()->views().first()->transform().m11();
  const Snap before = std::exchange(shown_, snapTo(place, others, kReachOnScreen / scale));
  if (shown_.x != before.x || shown_.y != before.y) update();
  return shown_.place;
}

void SnapGuides::clear() {
  if (shown_.x || shown_.y) update();
  shown_ = {};
}

QRectF SnapGuides::boundingRect() const {
  return frame_->rect();
}

void SnapGuides::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) {
  const QRectF frame = frame_->rect();
  painter->setPen(QPen(widget->palette().color(QPalette::Highlight), 0));
  if (shown_.x)
    painter->drawLine(QPointF(*shown_.x, frame.top()), QPointF(*shown_.x, frame.bottom()));
  if (shown_.y)
    painter->drawLine(QPointF(frame.left(), *shown_.y), QPointF(frame.right(), *shown_.y));
}

}  // namespace desk
