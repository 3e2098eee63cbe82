// The rendered picture in the view's scene.
#pragma once

#include <QGraphicsItem>
#include <QImage>

namespace desk {

/// Lies on the pixels of the screen exactly. What is smaller on the screen is averaged, once for
/// each picture and size, so that what moves over it is drawn quickly; pixels that are enlarged
/// stay squares, as they are what one wants to see.
class PictureItem : public QGraphicsItem {
 public:
  explicit PictureItem(QGraphicsItem* parent);

  /// `scale` pixels of the scene for each of the image.
  void show(const QImage& image, int scale);

  QRectF boundingRect() const override;
  void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) override;

 private:
  QImage image_;
  int scale_ = 1;
  QImage reduced_;  // to as many pixels as the screen has for it; null until it is drawn so
};

}  // namespace desk
