#include "desk/timeline/key_view.h"

#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace desk {
namespace {

constexpr double kMostKeyZoom = 64;
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
  connect(&preview_.document(), &SceneDocument::replaced, this, &KeyView::stopDrag);
  connect(&preview_, &Preview::layerChanged, this, [this] {
    stopDrag();
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

// --- Where things are.

QRect KeyView::tracks() const {
  const int names = std::min(26 * fontMetrics().averageCharWidth(), viewport()->width() / 3);
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

brisel::ParamIndex KeyView::parameterOf(Place key) const {
  return rows_[static_cast<std::size_t>(key.row)].parameter;
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

void KeyView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  layOut();
}

}  // namespace desk
