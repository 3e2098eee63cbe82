#include "desk/view/mask_shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace desk {
namespace {

using scene::MaskShape;

constexpr double kQuarterOfCircle = 0.5522847498;  // of the radius, to the control points
constexpr double kSmoothShare = 1.0 / 3;           // of the way to the neighbor

double lengthOf(QPointF way) {
  return std::hypot(way.x(), way.y());
}

const MaskShape::Vertex& after(const MaskShape& shape, std::size_t vertex) {
  return shape.vertices[(vertex + 1) % shape.vertices.size()];
}

QPointF mixed(QPointF a, QPointF b, double share) {
  return a + (b - a) * share;
}

/// The curve from one vertex to the next, cut in two.
struct Cut {
  QPointF firstOut, middleIn, middle, middleOut, lastIn;
};
Cut cutAt(const MaskShape::Vertex& from, const MaskShape::Vertex& to, double share) {
  const QPointF a = mixed(toPoint(from.point), toPoint(from.out), share);
  const QPointF b = mixed(toPoint(from.out), toPoint(to.in), share);
  const QPointF c = mixed(toPoint(to.in), toPoint(to.point), share);
  const QPointF in = mixed(a, b, share);
  const QPointF out = mixed(b, c, share);
  return {a, in, mixed(in, out, share), out, c};
}

MaskShape::Vertex corner(QPointF place) {
  const scene::MaskPoint point = toMaskPoint(place);
  return {point, point, point};
}

}  // namespace

QPointF toPoint(scene::MaskPoint point) {
  return {point.x, point.y};
}

scene::MaskPoint toMaskPoint(QPointF point) {
  return {std::round(point.x() * 10) / 10, std::round(point.y() * 10) / 10};
}

QPainterPath pathOf(const MaskShape& shape) {
  QPainterPath path;
  if (shape.vertices.empty()) return path;
  path.moveTo(toPoint(shape.vertices.front().point));
  const std::size_t curves = shape.vertices.size() - (shape.closed ? 0 : 1);
  for (std::size_t i = 0; i < curves; ++i) {
    const MaskShape::Vertex& to = after(shape, i);
    path.cubicTo(toPoint(shape.vertices[i].out), toPoint(to.in), toPoint(to.point));
  }
  return path;
}

MaskShape circle(QPointF middle, double radius) {
  MaskShape shape;
  const double arm = kQuarterOfCircle * radius;
  for (const QPointF way : {QPointF(0, -1), QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0)}) {
    const QPointF place = middle + radius * way;
    const QPointF onward(-way.y() * arm, way.x() * arm);  // clockwise
    shape.vertices.push_back(
        {toMaskPoint(place), toMaskPoint(place - onward), toMaskPoint(place + onward)});
  }
  return shape;
}

MaskShape rectangle(const QRectF& rectangle) {
  return {{corner(rectangle.topLeft()), corner(rectangle.topRight()),
           corner(rectangle.bottomRight()), corner(rectangle.bottomLeft())}};
}

OutlinePlace nearestPlace(const MaskShape& shape, QPointF point) {
  constexpr int kSteps = 100;
  OutlinePlace nearest;
  double least = std::numeric_limits<double>::max();
  const std::size_t curves = shape.vertices.size() - (shape.closed ? 0 : 1);
  for (std::size_t i = 0; i < curves; ++i) {
    for (int step = 1; step < kSteps; ++step) {
      const double share = static_cast<double>(step) / kSteps;
      const Cut cut = cutAt(shape.vertices[i], after(shape, i), share);
      const double distance = lengthOf(cut.middle - point);
      if (distance >= least) continue;
      least = distance;
      nearest = {i, share};
    }
  }
  return nearest;
}

MaskShape withVertex(MaskShape shape, OutlinePlace place) {
  const std::size_t next = (place.vertex + 1) % shape.vertices.size();
  const Cut cut = cutAt(shape.vertices[place.vertex], shape.vertices[next], place.share);
  const MaskShape::Vertex& from = shape.vertices[place.vertex];
  const MaskShape::Vertex& to = shape.vertices[next];
  MaskShape::Vertex added = corner(cut.middle);
  if (toPoint(from.out) != toPoint(from.point) || toPoint(to.in) != toPoint(to.point)) {
    added.in = toMaskPoint(cut.middleIn);
    added.out = toMaskPoint(cut.middleOut);
  }
  shape.vertices[place.vertex].out = toMaskPoint(cut.firstOut);
  shape.vertices[next].in = toMaskPoint(cut.lastIn);
  shape.vertices.insert(shape.vertices.begin() + static_cast<std::ptrdiff_t>(place.vertex) + 1,
                        added);
  return shape;
}

MaskShape withVertexAfter(MaskShape shape, std::size_t vertex) {
  if (shape.closed || vertex + 1 < shape.vertices.size()) {
    return withVertex(std::move(shape), {vertex, 0.5});
  }
  const QPointF end = toPoint(shape.vertices[vertex].point);
  const QPointF before = toPoint(shape.vertices[std::max<std::size_t>(vertex, 1) - 1].point);
  shape.vertices.push_back(corner(end + (end - before) / 2));
  return shape;
}

MaskShape withoutVertex(MaskShape shape, std::size_t vertex) {
  shape.vertices.erase(shape.vertices.begin() + static_cast<std::ptrdiff_t>(vertex));
  return shape;
}

void moveVertex(MaskShape& shape, std::size_t vertex, QPointF to) {
  MaskShape::Vertex& moved = shape.vertices[vertex];
  const QPointF way = to - toPoint(moved.point);
  for (scene::MaskPoint* point : {&moved.point, &moved.in, &moved.out}) {
    *point = toMaskPoint(toPoint(*point) + way);
  }
}

void moveAll(MaskShape& shape, QPointF way) {
  for (std::size_t i = 0; i < shape.vertices.size(); ++i) {
    moveVertex(shape, i, toPoint(shape.vertices[i].point) + way);
  }
}

bool isCorner(const MaskShape::Vertex& vertex) {
  const QPointF point = toPoint(vertex.point);
  return toPoint(vertex.in) == point && toPoint(vertex.out) == point;
}

void makeSmooth(MaskShape& shape, std::size_t vertex) {
  const std::size_t count = shape.vertices.size();
  const QPointF before = toPoint(shape.vertices[(vertex + count - 1) % count].point);
  const QPointF next = toPoint(after(shape, vertex).point);
  const QPointF place = toPoint(shape.vertices[vertex].point);
  const QPointF way = next - before;
  const double length = lengthOf(way);
  if (length == 0) return;
  const QPointF along = way / length * kSmoothShare;
  shape.vertices[vertex].in = toMaskPoint(place - along * lengthOf(place - before));
  shape.vertices[vertex].out = toMaskPoint(place + along * lengthOf(next - place));
}

void makeCorner(MaskShape& shape, std::size_t vertex) {
  shape.vertices[vertex] = corner(toPoint(shape.vertices[vertex].point));
}

void bend(MaskShape& shape, std::size_t vertex, Side side, QPointF to, bool breaks) {
  MaskShape::Vertex& bent = shape.vertices[vertex];
  scene::MaskPoint& moved = side == Side::In ? bent.in : bent.out;
  scene::MaskPoint& other = side == Side::In ? bent.out : bent.in;
  const QPointF place = toPoint(bent.point);
  const QPointF arm = toPoint(moved) - place;
  const QPointF otherArm = toPoint(other) - place;
  const double lengths = lengthOf(arm) * lengthOf(otherArm);
  constexpr double kInLine = -0.999;  // cosine of the angle between both
  const bool wereInLine = lengths > 0 && QPointF::dotProduct(arm, otherArm) < kInLine * lengths;
  moved = toMaskPoint(to);
  const double length = lengthOf(to - place);
  if (breaks || !wereInLine || length == 0) return;
  other = toMaskPoint(place - (to - place) / length * lengthOf(otherArm));
}

void straighten(MaskShape& shape, std::size_t vertex, Side side) {
  MaskShape::Vertex& bent = shape.vertices[vertex];
  (side == Side::In ? bent.in : bent.out) = bent.point;
}

void pull(MaskShape& shape, std::size_t vertex, QPointF out) {
  MaskShape::Vertex& pulled = shape.vertices[vertex];
  pulled.out = toMaskPoint(out);
  pulled.in = toMaskPoint(2 * toPoint(pulled.point) - out);
}

}  // namespace desk
