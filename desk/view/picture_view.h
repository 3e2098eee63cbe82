// The picture, zoomed and panned, over what lies below it.
#pragma once

#include <QGraphicsView>

#include "desk/render/preview.h"
#include "desk/view/mask_editor.h"
#include "desk/view/picture_item.h"
#include "desk/view/point_handles.h"
#include "desk/view/snap_guides.h"

class QGraphicsRectItem;

namespace desk {

/// Its scene is the frame at full size, in pixels, with its upper left corner at (0, 0), so that
/// what lies over the picture is placed in the frame's own coordinates.
class PictureView : public QGraphicsView {
  Q_OBJECT

 public:
  explicit PictureView(Preview& preview, QWidget* parent = nullptr);
  ~PictureView() override;

  /// Pixels of the screen by pixels of the frame: 1 shows each as it is.
  double zoom() const;
  bool isFitted() const { return fitted_; }
  /// The frame, in the scene.
  QRectF frameRect() const;

  MaskEditor& mask() { return *mask_; }
  SnapGuides& guides() { return *guides_; }

 public slots:
  /// Points and mask, or the picture alone.
  void showHandles(bool shown);
  void zoomIn();
  void zoomOut();
  void setZoom(double zoom);
  /// As large as the view allows, also once the view is resized.
  void fit();
  /// Moves the picture, by pixels of the screen.
  void pan(QPoint way);

 signals:
  void zoomChanged(double zoom);
  /// Where the pointer is, in pixels of the frame.
  void pointerMoved(QPointF place);
  /// What can be done with the handle that the keyboard has reached.
  void hintChanged(const QString& hint);

 protected:
  bool event(QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void drawBackground(QPainter* painter, const QRectF& rect) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void showPicture();
  void takeFrameSize();
  void zoomAround(QPoint place, double zoom);
  void scaleTo(double zoom);
  void tellFocus();
  bool cancelDrag();

  Preview& preview_;
  QGraphicsRectItem* frame_;  // which the picture does not leave
  PictureItem* picture_;
  SnapGuides* guides_;
  PointHandles* points_;
  MaskEditor* mask_;
  bool fitted_ = true;
  QPoint pannedFrom_;
};

}  // namespace desk
