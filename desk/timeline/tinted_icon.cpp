#include "desk/timeline/tinted_icon.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>

namespace desk {
namespace {

class TintedIcon : public QIconEngine {
 public:
  explicit TintedIcon(QIcon shape) : shape_(std::move(shape)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const double ratio = painter->device()->devicePixelRatioF();
    QPixmap tinted = shape_.pixmap(rect.size(), ratio, QIcon::Normal, state);
    QPainter tint(&tinted);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    tint.fillRect(tinted.rect(), QApplication::palette().color(group, QPalette::ButtonText));
    tint.end();
    painter->drawPixmap(rect, tinted);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new TintedIcon(*this); }

 private:
  QIcon shape_;
};

}  // namespace

QIcon tintedIcon(const QStyle& style, QStyle::StandardPixmap icon) {
  return QIcon(new TintedIcon(style.standardIcon(icon)));
}

}  // namespace desk
