#include "desk/view/point_handles.h"

#include <algorithm>
#include <cmath>

#include "core/options.h"
#include "desk/view/drag_step.h"
#include "effect/graying.h"

namespace desk {
namespace {

constexpr int kLargeSide = 4000;  // pixels, from which a point needs more digits

/// A place as a share of a side, with as many digits as tell pixels apart: scenes are read by
/// people.
double shareOf(double pixels, int side) {
  const double steps = side > kLargeSide ? 1e6 : 1e4;
  return std::round(pixels / side * steps) / steps;
}

}  // namespace

PointHandles::PointHandles(Preview& preview, SnapGuides& guides, QGraphicsItem* parent)
    : QGraphicsObject(parent),
      preview_(preview),
      guides_(guides),
      outline_(new Outline(this)),
      motion_(new Outline(this, Qt::DotLine)) {
  setFlag(ItemHasNoContents);
  for (std::int32_t i = 1; i < brisel::kParamCount; ++i) {
    const brisel::ParameterSpec& spec = brisel::parameterSpec(i);
    if (spec.kind != brisel::ParamKind::Point) continue;
    const Point point{static_cast<brisel::ParamIndex>(i),
                      new Handle(Handle::Look::Point, spec.label, this)};
    points_.push_back(point);
    makeDragsSteps(point.handle, preview_.document(), guides_);
    connect(point.handle, &Handle::dragged, this,
            [this, point](const HandleDrag& to) { drag(point, to); });
  }
  connect(&preview_.document(), &SceneDocument::changed, this, &PointHandles::follow);
  connect(&preview_, &Preview::frameChanged, this, &PointHandles::follow);
  connect(&preview_, &Preview::layerChanged, this, &PointHandles::follow);
  follow();
}

QPointF PointHandles::placeOf(brisel::ParamIndex parameter, double frame) const {
  const SceneDocument& document = preview_.document();
  const auto size = document.state()->plan.layer;
  const scene::ParamValue value = document.value(preview_.layer(), parameter, frame);
  return {value[0] * size.width, value[1] * size.height};
}

std::vector<Handle*> PointHandles::handles() const {
  std::vector<Handle*> all;
  for (const Point& point : points_) all.push_back(point.handle);
  return all;
}

void PointHandles::follow() {
  const brisel::Values values = preview_.document().values(preview_.layer(), preview_.frame());
  const auto states = brisel::grayingOf(values, brisel::kStart);
  for (const auto& [parameter, handle] : points_) {
    const auto state = std::ranges::find(*states, parameter, &brisel::ControlState::index);
    handle->setVisible(state == states->end() || state->enabled);
    handle->setPos(placeOf(parameter, preview_.frame()));
  }
  outline_->setPath(emitter());
  motion_->setPath(motion());
}

void PointHandles::drag(const Point& point, const HandleDrag& drag) {
  QPointF to = drag.to;
  if (drag.snaps) {
    std::vector<QPointF> others;
    for (const Point& other : points_) {
      if (other.handle != point.handle && other.handle->isVisible()) {
        others.push_back(other.handle->pos());
      }
    }
    to = guides_.snapped(to, std::move(others));
  }
  const auto size = preview_.document().state()->plan.layer;
  preview_.document().setValue(preview_.layer(), point.parameter,
                               {shareOf(to.x(), size.width), shareOf(to.y(), size.height)},
                               preview_.frame());
}

QPainterPath PointHandles::emitter() const {
  const SceneDocument& document = preview_.document();
  QPainterPath path;
  if (document.mask(preview_.layer())) return path;
  const auto standard = static_cast<brisel::StandardPath>(
      document.values(preview_.layer(), preview_.frame()).number(brisel::kStandardPath));
  const int frame = preview_.frame();
  const QPointF start = placeOf(brisel::kStart, frame);
  const QPointF end = placeOf(brisel::kEnd, frame);
  const QPointF controlStart = placeOf(brisel::kControlStart, frame);
  const QPointF controlEnd = placeOf(brisel::kControlEnd, frame);
  path.moveTo(start);
  switch (standard) {
    case brisel::StandardPath::Bezier:  // its handles are "Control start" and "End"
      path.cubicTo(controlStart, end, controlEnd);
      path.moveTo(start);
      path.lineTo(controlStart);
      path.moveTo(controlEnd);
      path.lineTo(end);
      break;
    case brisel::StandardPath::Line:
      path.lineTo(controlEnd);
      break;
    case brisel::StandardPath::Polyline:
      path.lineTo(controlStart);
      path.lineTo(end);
      path.lineTo(controlEnd);
      break;
    case brisel::StandardPath::Circle: {
      const QPointF arm = controlStart - start;
      const double radius = std::hypot(arm.x(), arm.y());
      path.addEllipse(start, radius, radius);
      break;
    }
    default:
      break;
  }
  return path;
}

QPainterPath PointHandles::motion() const {
  constexpr int kPieces = 20;           // from key to key
  constexpr std::size_t kKeysNear = 6;  // that are shown before the frame, and after it
  constexpr double kKeyRadius = 3;      // pixels of the frame
  QPainterPath path;
  for (const auto& [parameter, handle] : points_) {
    if (!handle->isVisible()) continue;
    const std::vector<ParamKey> keys = preview_.document().keys(preview_.layer(), parameter);
    if (keys.size() < 2) continue;
    const auto now = std::ranges::lower_bound(keys, preview_.frame(), {}, &ParamKey::time);
    const auto here = static_cast<std::size_t>(now - keys.begin());
    const std::size_t first = here - std::min(here, kKeysNear);
    const std::size_t end = std::min(here + kKeysNear, keys.size());
    for (std::size_t i = first; i < end; ++i) {
      path.addEllipse(placeOf(parameter, keys[i].time), kKeyRadius, kKeyRadius);
      if (i == first || keys[i - 1].ease.hold) continue;  // from which it jumps
      const double from = keys[i - 1].time;
      path.moveTo(placeOf(parameter, from));
      for (int piece = 1; piece <= kPieces; ++piece) {
        path.lineTo(placeOf(parameter, from + (keys[i].time - from) * piece / kPieces));
      }
    }
  }
  return path;
}

}  // namespace desk
