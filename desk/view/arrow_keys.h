// How far an arrow key moves a thing on the picture.
#pragma once

#include <QKeyEvent>
#include <QPointF>

namespace desk {

/// A pixel of the frame, ten with Shift held; null for other keys.
inline QPointF wayOfKey(const QKeyEvent& key) {
  const double step = key.modifiers().testFlag(Qt::ShiftModifier) ? 10 : 1;
  switch (key.key()) {
    case Qt::Key_Left:
      return {-step, 0};
    case Qt::Key_Right:
      return {step, 0};
    case Qt::Key_Up:
      return {0, -step};
    case Qt::Key_Down:
      return {0, step};
    default:
      return {};
  }
}

}  // namespace desk
