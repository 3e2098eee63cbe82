// Draws a mask's outline on the picture, vertex by vertex.
#pragma once

#include <QGraphicsObject>

#include "desk/view/mask_shapes.h"
#include "desk/view/outline.h"

namespace desk {

/// Takes the mouse and the keyboard of the whole scene until it is done: a click makes a corner, a
/// drag a vertex that the outline bends through. A click on the first vertex closes the outline;
/// Return or a double click ends it open. Backspace takes the last vertex back, Escape all. Without
/// a mouse, arrow keys move a cross, from the middle on; Space is a click there, and Return with
/// Shift closes.
class MaskPen : public QGraphicsObject {
  Q_OBJECT

 public:
  explicit MaskPen(const QRectF& sceneRect);

  /// Whether it has a use for the key.
  static bool takes(const QKeyEvent& key);

  QRectF boundingRect() const override { return area_; }
  void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override {}

 signals:
  /// Of two vertices or more.
  void drawn(const scene::MaskShape& shape);
  void canceled();
  /// By keys.
  void moved(QPointF place);

 protected:
  void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
  void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void end(bool closed);
  void putVertex();
  void show();
  void followMouse(QPointF place);
  double screenScale() const;

  QRectF area_;
  Outline* outline_;
  QPointF pointer_;
  bool isMovedByKeys_ = false;
  scene::MaskShape shape_;
};

}  // namespace desk
