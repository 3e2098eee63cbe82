// The points of a layer on the picture, the path that they make, and the way that they go.
#pragma once

#include <QGraphicsObject>
#include <vector>

#include "desk/render/preview.h"
#include "desk/view/handle.h"
#include "desk/view/outline.h"
#include "desk/view/snap_guides.h"

namespace desk {

/// Shows those points that have an effect, as the effect itself grays out the others.
class PointHandles : public QGraphicsObject {
  Q_OBJECT

 public:
  PointHandles(Preview& preview, SnapGuides& guides, QGraphicsItem* parent);

  /// In the order in which Tab reaches them.
  std::vector<Handle*> handles() const;

  QRectF boundingRect() const override { return {}; }
  void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}

 private:
  struct Point {
    brisel::ParamIndex parameter;
    Handle* handle;
  };

  void follow();
  void drag(const Point& point, const HandleDrag& drag);
  QPainterPath emitter() const;
  QPainterPath motion() const;  // of the points that have keys
  QPointF placeOf(brisel::ParamIndex parameter, double frame) const;

  Preview& preview_;
  SnapGuides& guides_;
  Outline* outline_;
  Outline* motion_;
  std::vector<Point> points_;
};

}  // namespace desk
