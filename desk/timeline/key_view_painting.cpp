#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "desk/timeline/key_view.h"

namespace desk {
namespace {

constexpr double kHalf = 5;  // of a key, pixels

/// A diamond; a square for a key that holds, round for one that eases.
QPainterPath keyShape(const scene::Ease& ease, QPointF middle) {
  QPainterPath path;
  if (ease.hold) {
    path.addRect(
        QRectF(middle - QPointF(kHalf - 1, kHalf - 1), QSizeF(2 * kHalf - 2, 2 * kHalf - 2)));
  } else if (ease.isStraight()) {
    path.addPolygon(QPolygonF{middle + QPointF(0, -kHalf), middle + QPointF(kHalf, 0),
                              middle + QPointF(0, kHalf), middle + QPointF(-kHalf, 0)});
    path.closeSubpath();
  } else {
    path.addEllipse(middle, kHalf - 0.5, kHalf - 0.5);
  }
  return path;
}

/// Frames from one number on the ruler to the next, so that they do not touch.
int framesPerNumber(double pixelsPerFrame, int room) {
  for (int power = 1; power < 10'000'000; power *= 10) {
    for (const int step : {1, 2, 5}) {
      if (power * step * pixelsPerFrame >= room) return power * step;
    }
  }
  return 10'000'000;
}

QColor blended(const QColor& over, const QColor& under, int percent) {
  const auto mixed = [&](int a, int b) { return (a * percent + b * (100 - percent)) / 100; };
  return {mixed(over.red(), under.red()), mixed(over.green(), under.green()),
          mixed(over.blue(), under.blue())};
}

}  // namespace

void KeyView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), palette().base());
  for (int row = 0; row < static_cast<int>(rows_.size()); ++row) {
    const QRect place = rowRect(row);
    if (place.bottom() >= tracks().top() && place.top() < viewport()->height()) {
      paintRow(painter, row);
    }
  }
  if (rows_.empty()) {
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(tracks(), Qt::AlignCenter,
                     fontMetrics().elidedText(
                         "Parameters with keys show here. A diamond in the controls sets a key.",
                         Qt::ElideRight, tracks().width()));
  }
  paintRuler(painter);

  painter.setClipRect(tracks().adjusted(0, -tracks().top(), 0, 0));
  if (!rectangle_.isNull()) {
    QColor inside = palette().color(QPalette::Highlight);
    painter.setPen(inside);
    inside.setAlpha(50);
    painter.setBrush(inside);
    painter.drawRect(rectangle_);
  }
  const double x = xOf(preview_.frame());
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawLine(QPointF(x, 0), QPointF(x, viewport()->height()));
}

void KeyView::paintRow(QPainter& painter, int row) const {
  const QRect place = rowRect(row);
  const bool isCurrent = row == currentRow_;
  painter.setClipRect(viewport()->rect().adjusted(0, tracks().top(), 0, 0));
  if (row % 2 == 1) painter.fillRect(place, palette().alternateBase());
  const QRect name(0, place.top(), tracks().left(), place.height());
  const bool isFocused = isCurrent && hasFocus();
  if (isCurrent) {
    painter.fillRect(name, palette().color(isFocused ? QPalette::Active : QPalette::Inactive,
                                           QPalette::Highlight));
  }
  painter.setPen(palette().color(isCurrent ? QPalette::HighlightedText : QPalette::Text));
  const brisel::ParamIndex parameter = rows_[static_cast<std::size_t>(row)].parameter;
  const QString label =
      parameter == brisel::kPath ? QString("Mask") : brisel::parameterSpec(parameter).label;
  const QRect inside = name.adjusted(8, 0, -4, 0);
  painter.drawText(inside, Qt::AlignVCenter,
                   fontMetrics().elidedText(label, Qt::ElideRight, inside.width()));
  paintTrack(painter, row);
}

void KeyView::paintTrack(QPainter& painter, int row) const {
  const QRect place = rowRect(row);
  const Row& shown = rows_[static_cast<std::size_t>(row)];
  const QColor ink = palette().color(QPalette::Text);
  const double y = place.top() + place.height() / 2.0;
  painter.setClipRect(tracks());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(blended(ink, palette().color(QPalette::Base), 35), 1));
  if (shown.keys.size() > 1) {
    painter.drawLine(QPointF(xOf(shown.keys.front().time), y),
                     QPointF(xOf(shown.keys.back().time), y));
  }
  const auto selected = selected_.find(shown.parameter);
  double lastX = -kHalf;
  bool wasSelected = false;
  for (const ParamKey& key : shown.keys) {
    const bool isSelected = selected != selected_.end() && selected->second.contains(key.time);
    const double x = xOf(key.time);
    if (x < tracks().left() - kHalf || x > tracks().right() + kHalf) continue;
    if (x - lastX < 1 && isSelected == wasSelected) continue;  // of very many, one for each pixel
    lastX = x;
    wasSelected = isSelected;
    painter.setPen(QPen(isSelected ? ink : palette().color(QPalette::Base), 1));
    painter.setBrush(isSelected ? palette().color(QPalette::Highlight) : ink);
    painter.drawPath(keyShape(key.ease, {x, y}));
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void KeyView::paintRuler(QPainter& painter) const {
  const QRect ruler(0, 0, viewport()->width(), tracks().top());
  painter.setClipRect(ruler);
  painter.fillRect(ruler, palette().window());
  painter.setPen(palette().color(QPalette::WindowText));
  const int half = ruler.height() / 2;
  painter.drawText(QRect(8, 0, tracks().left() - 12, ruler.height()), Qt::AlignVCenter,
                   QString("Frame %1").arg(preview_.frame()));

  painter.setClipRect(ruler.adjusted(tracks().left(), 0, 0, 0));
  QColor range = palette().color(QPalette::Highlight);
  range.setAlpha(playback_.hasRange() ? 110 : 40);
  painter.fillRect(QRectF(QPointF(xOf(playback_.in()), 2), QPointF(xOf(playback_.out()), 7)),
                   range);
  const double perFrame = pixelsPerFrame();
  const int step = framesPerNumber(perFrame, fontMetrics().horizontalAdvance("000000"));
  const int last = preview_.document().state()->plan.frames - 1;
  const int first = std::max(0, frameAt(tracks().left()) / step * step);
  const int end = std::min(last, frameAt(tracks().right()));
  for (int frame = first; frame <= end; frame += step) {
    const double x = xOf(frame);
    painter.drawLine(QPointF(x, ruler.bottom() - 5), QPointF(x, ruler.bottom()));
    const QString number = QString::number(frame);
    const double width = fontMetrics().horizontalAdvance(number);
    const double left = std::min(x + 3, ruler.width() - width);
    painter.drawText(QRectF(left, half - 4, width, half), Qt::AlignVCenter, number);
  }
  const int small = framesPerNumber(perFrame, 6);
  for (int frame = first / small * small; frame <= end; frame += small) {
    const double x = xOf(frame);
    painter.drawLine(QPointF(x, ruler.bottom() - 2), QPointF(x, ruler.bottom()));
  }
}

}  // namespace desk
