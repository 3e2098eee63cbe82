// A thing on the picture that is dragged.
#pragma once

#include <QGraphicsObject>

namespace desk {

/// Where a handle is asked to go.
struct HandleDrag {
  QPointF to;          // in the scene
  bool snaps = true;   // not by keys, nor with Ctrl held
  bool bends = false;  // with Ctrl and Shift held
};

/// As large on the screen at any zoom. Goes nowhere by itself: whoever owns it gives it its place.
/// With Shift held it goes level or upright. Arrow keys move it by a pixel of the frame, by ten
/// with Shift. Escape cancels a drag.
class Handle : public QGraphicsObject {
  Q_OBJECT

 public:
  enum class Look { Point, Vertex, Tangent };

  /// `name` is what people call it.
  Handle(Look look, const QString& name, QGraphicsItem* parent);

  const QString& name() const { return name_; }
  /// What can be done with it, in a few words.
  QString hint() const;
  /// Whether it has a use for the key.
  bool takes(const QKeyEvent& key) const;
  /// Ends a drag as if it had not been.
  void cancel();
  QRectF boundingRect() const override;
  void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

 signals:
  void focused();
  /// Before the first and after the last of a row of drags.
  void grabbed();
  void released();
  void canceled();  // instead
  void dragged(const desk::HandleDrag& drag);
  void activated();  // by a double click or Return
  void addWanted();
  void removeWanted();
  void menuWanted(QPoint globalPlace);

 protected:
  void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
  void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
  void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;

 private:
  void grab();
  void release();

  Look look_;
  QString name_;
  bool isGrabbed_ = false;
  bool isHovered_ = false;
  QPointF start_;   // where it was when it was pressed
  QPointF offset_;  // from the pointer to its middle
};

}  // namespace desk
