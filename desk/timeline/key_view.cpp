#include "desk/timeline/key_view.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace desk {
namespace {

constexpr double kMostKeyZoom = 64;
constexpr double kKeyZoomStep = 1.25;
constexpr int kReach = 6;         // pixels from the middle of a key or marker
constexpr int kSpaceAtEnds = 10;  // pixels before the first and after the last frame

QString easeText(const scene::Ease& ease) {
  if (ease.hold) return "hold";
  if (ease.isStraight()) return "linear";
  for (const std::string& name : scene::easeNames()) {
    const scene::Ease named = *scene::easeByName(name);
    if (!named.hold && ease.x1 == named.x1 && ease.y1 == named.y1 && ease.x2 == named.x2 &&
        ease.y2 == named.y2) {
      return QString::fromStdString(name);
    }
  }
  return "curve";
}

}  // namespace

KeyView::KeyView(Preview& preview, Playback& playback, QWidget* parent)
    : QAbstractScrollArea(parent), preview_(preview), playback_(playback) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setMouseTracking(true);
  setFrameShape(NoFrame);
  setAccessibleName("Keys over time");
  connect(&preview_.document(), &SceneDocument::changed, this, &KeyView::readRows);
  connect(&preview_, &Preview::layerChanged, this, [this] {
    select({});
    readRows();
  });
  connect(&preview_, &Preview::frameChanged, this, [this](int frame) {
    keepInSight(frame);
    viewport()->update();
  });
  connect(&playback_, &Playback::rangeChanged, this, [this] { viewport()->update(); });
  readRows();
}

QSize KeyView::sizeHint() const {
  return {600, rowRect(4).bottom()};
}

// --- What it shows.

void KeyView::readRows() {
  const SceneDocument& document = preview_.document();
  const int layer = preview_.layer();
  rows_.clear();
  for (const brisel::ParamIndex parameter : document.keyedParameters(layer)) {
    if (parameter != brisel::kPath) rows_.push_back({parameter, document.keys(layer, parameter)});
  }
  if (const auto mask = document.mask(layer); mask && mask->keys.size() > 1) {
    Row row{brisel::kPath};
    for (const scene::Mask::Key& key : mask->keys) {
      const auto number = static_cast<double>(row.shapes.size());
      row.keys.emplace_back(key, scene::ParamValue{number});
      row.shapes.push_back(key.value);
    }
    rows_.push_back(std::move(row));
  }
  // What is gone, as by undo, is no longer selected.
  std::map<brisel::ParamIndex, KeyTimes> still;
  for (const Row& row : rows_) {
    const auto found = selected_.find(row.parameter);
    if (found == selected_.end()) continue;
    for (const ParamKey& key : row.keys) {
      if (found->second.contains(key.time)) still[row.parameter].insert(key.time);
    }
  }
  select(std::move(still));
  layOut();
  setCurrentRow(currentRow_);
}

void KeyView::select(std::map<brisel::ParamIndex, KeyTimes> keys) {
  if (keys == selected_) return;
  selected_ = std::move(keys);
  viewport()->update();
  emit selectionChanged();
}

void KeyView::selectAll() {
  std::map<brisel::ParamIndex, KeyTimes> all;
  for (const Row& row : rows_) {
    for (const ParamKey& key : row.keys) all[row.parameter].insert(key.time);
  }
  select(std::move(all));
}

void KeyView::selectIn(const QRect& rectangle) {
  std::map<brisel::ParamIndex, KeyTimes> inside;
  for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
    const QRect place = rowRect(i);
    if (!place.intersects(rectangle)) continue;
    const Row& row = rows_[static_cast<std::size_t>(i)];
    for (const ParamKey& key : row.keys) {
      const double x = xOf(key.time);
      if (x >= rectangle.left() && x <= rectangle.right()) inside[row.parameter].insert(key.time);
    }
  }
  select(std::move(inside));
}

void KeyView::setCurrentRow(int row) {
  viewport()->update();
  currentRow_ = std::clamp(row, 0, std::max(0, static_cast<int>(rows_.size()) - 1));
  if (rows_.empty()) return setAccessibleDescription("No parameter has keys");
  const QRect place = rowRect(currentRow_);
  const int hidden = std::min(place.top() - tracks().top(), 0) +
                     std::max(place.bottom() - viewport()->height(), 0);
  verticalScrollBar()->setValue(verticalScrollBar()->value() + hidden);
  const Row& current = rows_[static_cast<std::size_t>(currentRow_)];
  setAccessibleDescription(QString("%1, %2 keys")
                               .arg(brisel::parameterSpec(current.parameter).label)
                               .arg(current.keys.size()));
}

std::vector<double> KeyView::allTimes() const {
  std::vector<double> times;
  for (const Row& row : rows_) {
    for (const ParamKey& key : row.keys) times.push_back(key.time);
  }
  std::ranges::sort(times);
  return times;
}

QString KeyView::keyText(Place key) const {
  const Row& row = rows_[static_cast<std::size_t>(key.row)];
  const auto found = std::ranges::find(row.keys, key.time, &ParamKey::time);
  return QString("%1: key at frame %2, %3")
      .arg(brisel::parameterSpec(row.parameter).label)
      .arg(key.time)
      .arg(easeText(found->ease));
}

// --- Edits.

void KeyView::setKeysOf(const Row& row, const std::vector<ParamKey>& keys, const QString& label) {
  SceneDocument& document = preview_.document();
  if (row.parameter != brisel::kPath) {
    return document.setKeys(preview_.layer(), row.parameter, keys, label);
  }
  std::optional<scene::Mask> mask = document.mask(preview_.layer());
  if (!mask) return;
  mask->keys.clear();
  for (const ParamKey& key : keys) {
    mask->keys.emplace_back(key, row.shapes[static_cast<std::size_t>(key.value[0])]);
  }
  document.setMask(preview_.layer(), mask, label);
}

/// Calls `edit` with each row that has keys selected and their times, for one step of the document.
template <class Edit>
void KeyView::editSelected(const std::vector<Row>& rows,
                           const std::map<brisel::ParamIndex, KeyTimes>& selected,
                           const Edit& edit) {
  preview_.document().beginGesture();
  for (const Row& row : rows) {
    const auto found = selected.find(row.parameter);
    if (found != selected.end()) edit(row, found->second);
  }
  preview_.document().endGesture();
}

// Edits make the rows anew, so they are given copies.
void KeyView::removeSelected() {
  editSelected(std::vector(rows_), std::map(selected_), [&](const Row& row, const KeyTimes& times) {
    if (row.parameter == brisel::kPath) {
      std::vector<ParamKey> left = keysWithout(row.keys, times);
      if (left.empty()) left.assign(1, row.keys.front());
      return setKeysOf(row, left, "Remove Keys");
    }
    for (const double time : times) {
      preview_.document().removeKey(preview_.layer(), row.parameter, time);
    }
  });
}

void KeyView::easeSelected(const scene::Ease& ease) {
  editSelected(std::vector(rows_), std::map(selected_), [&](const Row& row, const KeyTimes& times) {
    setKeysOf(row, keysEased(row.keys, times, ease), "Ease Keys");
  });
}

void KeyView::moveSelected(int frames) {
  rowsBefore_ = rows_;
  selectedBefore_ = selected_;
  dragKeys(frames, false);
}

void KeyView::dragKeys(int frames, bool copies) {
  std::map<brisel::ParamIndex, KeyTimes> moved;
  const int last = preview_.document().state()->plan.frames - 1;
  // All rows go as far as the one that can go least.
  for (const auto& [parameter, times] : selectedBefore_) {
    frames = std::max(frames, -static_cast<int>(std::floor(*times.begin())));
    frames = std::min(frames, std::max(0, last - static_cast<int>(std::ceil(*times.rbegin()))));
  }
  editSelected(rowsBefore_, selectedBefore_, [&](const Row& row, const KeyTimes& times) {
    MovedKeys result = movedKeys(row.keys, times, frames, copies);
    setKeysOf(row, result.keys, copies ? "Copy Keys" : "Move Keys");
    moved[row.parameter] = std::move(result.chosen);
  });
  select(std::move(moved));
}

void KeyView::copySelected() {
  copied_.clear();
  for (const Row& row : rows_) {
    const auto found = selected_.find(row.parameter);
    if (found == selected_.end() || row.parameter == brisel::kPath) continue;
    for (const ParamKey& key : row.keys) {
      if (found->second.contains(key.time)) copied_[row.parameter].push_back(key);
    }
  }
}

void KeyView::paste() {
  if (copied_.empty()) return;
  double first = copied_.begin()->second.front().time;
  for (const auto& [parameter, keys] : copied_) first = std::min(first, keys.front().time);
  SceneDocument& document = preview_.document();
  const int layer = preview_.layer();
  std::map<brisel::ParamIndex, KeyTimes> pasted;
  document.beginGesture();
  for (auto [parameter, keys] : copied_) {
    for (ParamKey& key : keys) {
      key.time += preview_.frame() - first;
      pasted[parameter].insert(key.time);
    }
    document.setKeys(layer, parameter, keysWith(document.keys(layer, parameter), keys),
                     "Paste Keys");
  }
  document.endGesture();
  select(std::move(pasted));
}

void KeyView::addKey() {
  if (rows_.empty()) return;
  const Row row = rows_[static_cast<std::size_t>(currentRow_)];
  SceneDocument& document = preview_.document();
  const int layer = preview_.layer();
  if (row.parameter != brisel::kPath) {
    return document.addKey(layer, row.parameter, preview_.frame());
  }
  document.setMaskShape(layer, scene::shapeAt(*document.mask(layer), preview_.frame()),
                        preview_.frame());
}

void KeyView::toPreviousKey() {
  const std::vector<double> times = allTimes();
  const auto found = std::ranges::lower_bound(times, preview_.frame());
  if (found != times.begin()) preview_.setFrame(static_cast<int>(std::floor(*std::prev(found))));
}

void KeyView::toNextKey() {
  const std::vector<double> times = allTimes();
  const auto found = std::ranges::upper_bound(times, preview_.frame());
  if (found != times.end()) preview_.setFrame(static_cast<int>(std::ceil(*found)));
}

// --- Where things are.

QRect KeyView::tracks() const {
  const int names = 26 * fontMetrics().averageCharWidth();
  return viewport()->rect().adjusted(names, 2 * fontMetrics().height(), 0, 0);
}

QRect KeyView::rowRect(int row) const {
  const int height = fontMetrics().height() + 6;
  return {0, tracks().top() + row * height - verticalScrollBar()->value(), viewport()->width(),
          height};
}

int KeyView::rowAt(int y) const {
  if (y < tracks().top()) return -1;
  const int row = (y - rowRect(0).top()) / rowRect(0).height();
  return row < static_cast<int>(rows_.size()) ? row : -1;
}

double KeyView::pixelsPerFrame() const {
  const int frames = std::max(1, preview_.document().state()->plan.frames - 1);
  return std::max(1, tracks().width() - 2 * kSpaceAtEnds) * zoom_ / frames;
}

double KeyView::xOf(double frame) const {
  return tracks().left() + kSpaceAtEnds + frame * pixelsPerFrame() - horizontalScrollBar()->value();
}

int KeyView::frameAt(int x) const {
  return static_cast<int>(std::lround((x - xOf(0)) / pixelsPerFrame()));
}

std::optional<KeyView::Place> KeyView::keyAt(QPoint place) const {
  const int row = rowAt(place.y());
  if (row < 0 || place.x() < tracks().left()) return {};
  std::optional<Place> nearest;
  for (const ParamKey& key : rows_[static_cast<std::size_t>(row)].keys) {
    const double distance = std::abs(xOf(key.time) - place.x());
    if (distance > kReach) continue;
    if (nearest && std::abs(xOf(nearest->time) - place.x()) <= distance) continue;
    nearest = {row, key.time};
  }
  return nearest;
}

void KeyView::layOut() {
  const int width = tracks().width();
  horizontalScrollBar()->setPageStep(width);
  horizontalScrollBar()->setRange(0, static_cast<int>(width * (zoom_ - 1)));
  const int height = viewport()->height() - tracks().top();
  verticalScrollBar()->setPageStep(height);
  verticalScrollBar()->setSingleStep(rowRect(0).height());
  verticalScrollBar()->setRange(
      0, std::max(0, static_cast<int>(rows_.size()) * rowRect(0).height() - height));
  viewport()->update();
}

void KeyView::keepInSight(int frame) {
  const double x = xOf(frame);
  QScrollBar* bar = horizontalScrollBar();
  if (x < tracks().left() || x > tracks().right()) {
    bar->setValue(bar->value() + static_cast<int>(x) - tracks().center().x());
  }
}

void KeyView::zoomBy(double factor) {
  const int frame = preview_.frame();
  const double before = xOf(frame);
  zoom_ = std::clamp(zoom_ * factor, 1.0, kMostKeyZoom);
  layOut();
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() +
                                  static_cast<int>(xOf(frame) - before));
}

// --- Mouse and keyboard.

void KeyView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  layOut();
}

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
  if (pressed_.y() < tracks().top()) {
    const auto isAt = [&](double frame) { return std::abs(xOf(frame) - pressed_.x()) <= kReach; };
    const bool onMarkers = playback_.hasRange() && pressed_.y() < tracks().top() / 2;
    drag_ = onMarkers && isAt(playback_.in())    ? Drag::kIn
            : onMarkers && isAt(playback_.out()) ? Drag::kOut
                                                 : Drag::kFrame;
    return mouseMoveEvent(event);
  }
  const int row = rowAt(pressed_.y());
  if (row >= 0) setCurrentRow(row);
  const bool adds = event->modifiers().testFlag(Qt::ShiftModifier);
  const auto key = keyAt(pressed_);
  if (!key) {
    drag_ = pressed_.x() < tracks().left() ? Drag::kNone : Drag::kRectangle;
    if (!adds) select({});
    return;
  }
  const brisel::ParamIndex parameter = rows_[static_cast<std::size_t>(key->row)].parameter;
  auto chosen = selected_;
  const bool was = chosen[parameter].contains(key->time);
  if (!was && !adds) chosen.clear();
  chosen[parameter].insert(key->time);
  select(std::move(chosen));
  drag_ = Drag::kKeys;
  rowsBefore_ = rows_;
  selectedBefore_ = selected_;
}

void KeyView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->pos();
  if (drag_ == Drag::kNone) return;
  const int frame = std::clamp(frameAt(at.x()), 0, preview_.document().state()->plan.frames - 1);
  switch (drag_) {
    case Drag::kFrame:
      playback_.pause();
      return preview_.setFrame(frame);
    case Drag::kIn:
      return playback_.setIn(std::min(frame, playback_.out()));
    case Drag::kOut:
      return playback_.setOut(std::max(frame, playback_.in()));
    case Drag::kRectangle:
      rectangle_ = QRect(pressed_, at).normalized();
      selectIn(rectangle_);
      return viewport()->update();
    case Drag::kKeys: {
      if (!moved_ && (at - pressed_).manhattanLength() < kReach / 2) return;
      if (!moved_) preview_.document().beginGesture();
      moved_ = true;
      return dragKeys(frameAt(at.x()) - frameAt(pressed_.x()),
                      event->modifiers().testFlag(Qt::ControlModifier));
    }
    case Drag::kNone:
      return;
  }
}

void KeyView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (drag_ == Drag::kKeys && moved_) preview_.document().endGesture();
  drag_ = Drag::kNone;
  rectangle_ = {};
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
    const brisel::ParamIndex parameter = rows_[static_cast<std::size_t>(key->row)].parameter;
    const auto found = selected_.find(parameter);
    if (found == selected_.end() || !found->second.contains(key->time)) {
      select({{parameter, {key->time}}});
    }
  }
  if (hasSelection()) emit menuWanted(event->globalPos());
}

void KeyView::keyPressEvent(QKeyEvent* event) {
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
