#include "desk/view/picture_item.h"

#include <QPainter>
#include <QWidget>
#include <cmath>

namespace desk {
namespace {

constexpr double kEnlarged = 2;  // from which on pixels are squares

}  // namespace

PictureItem::PictureItem(QGraphicsItem* parent) : QGraphicsItem(parent) {}

void PictureItem::show(const QImage& image, int scale) {
  if (image.size() != image_.size() || scale != scale_) prepareGeometryChange();
  image_ = image;
  scale_ = scale;
  reduced_ = {};
  update();
}

QRectF PictureItem::boundingRect() const {
  return {QPointF(), QSizeF(image_.size() * scale_)};
}

void PictureItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget* widget) {
  const double ratio = widget->devicePixelRatioF();
  const QRectF place = painter->worldTransform().mapRect(boundingRect());
  const QPointF corner(std::round(place.x() * ratio) / ratio,
                       std::round(place.y() * ratio) / ratio);
  const QSize size = (place.size() * ratio).toSize().expandedTo({1, 1});
  const double zoom = static_cast<double>(size.width()) / image_.width();
  const bool isMostlySeen =
      place.width() * place.height() < 2.0 * widget->width() * widget->height();
  painter->save();
  if (zoom <= 1 && isMostlySeen) {
    if (reduced_.size() != size) {
      reduced_ = image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    reduced_.setDevicePixelRatio(ratio);
    painter->setWorldTransform({});
    painter->drawImage(corner, reduced_);
  } else {
    painter->setWorldTransform(
        QTransform::fromTranslate(corner.x(), corner.y())
            .scale(place.width() / image_.width(), place.height() / image_.height()));
    painter->setRenderHint(QPainter::SmoothPixmapTransform, zoom < kEnlarged);
    painter->drawImage(QPointF(), image_);
  }
  painter->restore();
}

}  // namespace desk
