// What a dragged handle snaps to, and the lines that show it.
#pragma once

#include <QGraphicsItem>
#include <optional>
#include <vector>

namespace desk {

/// Each of x and y goes to that of the nearest mark, if one is within `reach`.
struct Snap {
  QPointF place;
  std::optional<double> x;  // of the mark
  std::optional<double> y;
};
Snap snapTo(QPointF place, const std::vector<QPointF>& marks, double reach);

/// Lies over the frame, which is its parent's rectangle.
class SnapGuides : public QGraphicsItem {
 public:
  explicit SnapGuides(QGraphicsRectItem* frame);

  bool snaps() const { return snaps_; }
  void setSnaps(bool snaps) { snaps_ = snaps; }

  /// To the frame's edges and middles, and to other points. Shows the lines until clear().
  QPointF snapped(QPointF place, std::vector<QPointF> others);
  void clear();

  QRectF boundingRect() const override;
  void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

 private:
  QGraphicsRectItem* frame_;
  bool snaps_ = true;
  Snap shown_;
};

}  // namespace desk
