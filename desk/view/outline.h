// A line on the picture: the emitter's path, or a mask's outline.
#pragma once

#include <QGraphicsObject>
#include <QPainterPath>

namespace desk {

/// Seen on any picture, and as thin at any zoom. Until setGrabbable() it lets the mouse through.
class Outline : public QGraphicsObject {
  Q_OBJECT

 public:
  explicit Outline(QGraphicsItem* parent, Qt::PenStyle style = Qt::SolidLine);

  void setPath(const QPainterPath& path);
  void setGrabbable();
  /// Ends a drag as if it had not been.
  void cancel();

  QRectF boundingRect() const override;
  QPainterPath shape() const override;
  void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

 signals:
  void grabbed();
  void released();
  void canceled();  // instead
  /// The way in the scene since the last, or since it was pressed.
  void dragged(QPointF way);
  void doubleClicked(QPointF place);
  void menuWanted(QPoint globalPlace, QPointF place);

 protected:
  bool sceneEvent(QEvent* event) override;
  void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
  void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
  void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override;

 private:
  void release();
  double screenPixel() const;  // in the scene

  QPainterPath path_;
  Qt::PenStyle style_;
  bool isGrabbed_ = false;
};

}  // namespace desk
