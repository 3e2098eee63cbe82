// The mouse and the keyboard on the timeline.
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "desk/timeline/key_view.h"

namespace desk {
namespace {

constexpr double kKeyZoomStep = 1.25;
constexpr int kScrollTime = 30;    // milliseconds between two steps of a drag beyond the edge
constexpr int kMostOfScroll = 40;  // pixels of such a step

}  // namespace

void KeyView::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    return QAbstractScrollArea::wheelEvent(event);
  }
  constexpr double kNotch = 120;  // eighths of a degree, of the usual wheel
  zoomBy(std::pow(kKeyZoomStep, event->angleDelta().y() / kNotch));
}

void KeyView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_ = event->pos();
  moved_ = false;
  selectedBefore_ = selected_;
  frameBefore_ = preview_.frame();
  rangeBefore_ = {playback_.in(), playback_.out()};
  if (pressed_.y() < tracks().top()) {
    const auto isAt = [&](double frame) { return std::abs(xOf(frame) - pressed_.x()) <= kReach; };
    const bool onMarkers = playback_.hasRange() && pressed_.y() < tracks().top() / 2;
    drag_ = onMarkers && isAt(playback_.in())    ? Drag::In
            : onMarkers && isAt(playback_.out()) ? Drag::Out
                                                 : Drag::Frame;
    return mouseMoveEvent(event);
  }
  const int row = rowAt(pressed_.y());
  if (row >= 0) setCurrentRow(row);
  const bool adds = event->modifiers().testFlag(Qt::ShiftModifier);
  const auto key = keyAt(pressed_);
  if (!key) {
    drag_ = pressed_.x() < tracks().left() ? Drag::None : Drag::Rectangle;
    if (!adds) select({});
    return;
  }
  auto chosen = selected_;
  wasSelected_ = !chosen[parameterOf(*key)].insert(key->time).second;
  if (!wasSelected_ && !adds) chosen = {{parameterOf(*key), {key->time}}};
  select(std::move(chosen));
  drag_ = Drag::Keys;
  rowsBefore_ = rows_;
  selectedBefore_ = selected_;
}

void KeyView::mouseMoveEvent(QMouseEvent* event) {
  if (drag_ == Drag::None) return;
  draggedTo_ = event->pos();
  dragTo(draggedTo_, event->modifiers());
  // The frame shown is kept in sight anyway.
  if (drag_ == Drag::Frame || beyondTracks(draggedTo_.x()) == 0) {
    scrolling_.stop();
  } else if (!scrolling_.isActive()) {
    scrolling_.start(kScrollTime, this);
  }
}

void KeyView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != scrolling_.timerId()) return QAbstractScrollArea::timerEvent(event);
  QScrollBar* bar = horizontalScrollBar();
  bar->setValue(bar->value() +
                std::clamp(beyondTracks(draggedTo_.x()), -kMostOfScroll, kMostOfScroll));
  dragTo(draggedTo_, QGuiApplication::keyboardModifiers());
}

/// How far right of the tracks; negative: left of them.
int KeyView::beyondTracks(int x) const {
  return std::min(x - tracks().left(), 0) + std::max(x - tracks().right(), 0);
}

void KeyView::scrollContentsBy(int dx, int dy) {
  pressed_ += QPoint(dx, dy);
  QAbstractScrollArea::scrollContentsBy(dx, dy);
}

void KeyView::dragTo(QPoint at, Qt::KeyboardModifiers modifiers) {
  const int frame = std::clamp(frameAt(at.x()), 0, preview_.document().state()->plan.frames - 1);
  switch (drag_) {
    case Drag::Frame:
      playback_.pause();
      return preview_.setFrame(frame);
    case Drag::In:
      return playback_.setIn(std::min(frame, playback_.out()));
    case Drag::Out:
      return playback_.setOut(std::max(frame, playback_.in()));
    case Drag::Rectangle:
      rectangle_ = QRect(pressed_, at).normalized();
      selectIn(rectangle_);
      return viewport()->update();
    case Drag::Keys: {
      if (!moved_ && (at - pressed_).manhattanLength() < kReach / 2) return;
      if (!moved_) preview_.document().beginGesture();
      moved_ = true;
      return dragKeys(frameAt(at.x()) - frameAt(pressed_.x()),
                      modifiers.testFlag(Qt::ControlModifier));
    }
    case Drag::None:
      return;
  }
}

void KeyView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const auto key = keyAt(pressed_);
  if (drag_ == Drag::Keys && !moved_ && wasSelected_ && key) selectAgain(*key, event->modifiers());
  stopDrag();
}

/// A click on one of the selected keys, which a drag moves all.
void KeyView::selectAgain(Place key, Qt::KeyboardModifiers modifiers) {
  auto chosen = selected_;
  if (modifiers.testFlag(Qt::ShiftModifier)) {
    KeyTimes& times = chosen[parameterOf(key)];
    times.erase(key.time);
    if (times.empty()) chosen.erase(parameterOf(key));
  } else if (!modifiers.testFlag(Qt::ControlModifier)) {
    chosen = {{parameterOf(key), {key.time}}};
  }
  select(std::move(chosen));
}

void KeyView::stopDrag() {
  scrolling_.stop();
  if (drag_ == Drag::Keys && moved_) preview_.document().endGesture();
  drag_ = Drag::None;
  rectangle_ = {};
  viewport()->update();
}

void KeyView::cancelDrag() {
  scrolling_.stop();
  switch (std::exchange(drag_, Drag::None)) {
    case Drag::Frame:
      return preview_.setFrame(frameBefore_);
    case Drag::In:
      return playback_.setIn(rangeBefore_.first);
    case Drag::Out:
      return playback_.setOut(rangeBefore_.second);
    case Drag::Keys:
      if (moved_) preview_.document().cancelGesture();
      break;
    default:
      break;
  }
  rectangle_ = {};
  select(selectedBefore_);
  viewport()->update();
}

void KeyView::mouseDoubleClickEvent(QMouseEvent* event) {
  const int row = rowAt(event->pos().y());
  if (row < 0 || event->pos().x() < tracks().left()) return mousePressEvent(event);
  if (const auto key = keyAt(event->pos())) {
    return preview_.setFrame(static_cast<int>(std::lround(key->time)));
  }
  setCurrentRow(row);
  preview_.setFrame(frameAt(event->pos().x()));
  addKey();
}

void KeyView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse) {
    const auto key = keyAt(event->pos());
    if (!key) return;
    const brisel::ParamIndex parameter = parameterOf(*key);
    const auto found = selected_.find(parameter);
    if (found == selected_.end() || !found->second.contains(key->time)) {
      select({{parameter, {key->time}}});
    }
  }
  if (hasSelection()) emit menuWanted(event->globalPos());
}

void KeyView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    if (drag_ == Drag::None) return select({});
    return cancelDrag();
  }
  const int way = event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
  if (way != 0) return setCurrentRow(currentRow_ + way);
  if (event->key() != Qt::Key_Return || rows_.empty()) {
    return QAbstractScrollArea::keyPressEvent(event);
  }
  // The keys at the frame shown, else those of the row.
  const Row& row = rows_[static_cast<std::size_t>(currentRow_)];
  KeyTimes times;
  for (const ParamKey& key : row.keys) {
    if (std::lround(key.time) == preview_.frame()) times.insert(key.time);
  }
  if (times.empty()) {
    for (const ParamKey& key : row.keys) times.insert(key.time);
  }
  select({{row.parameter, times}});
}

bool KeyView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto key = keyAt(help->pos());
    QToolTip::showText(help->globalPos(), key ? keyText(*key) : QString(), viewport());
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

}  // namespace desk
