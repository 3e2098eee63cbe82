#include <cmath>
#include <iterator>
#include <utility>

#include "plain_contour.h"

namespace reference {
namespace {

using Position = std::list<VertexRef>::iterator;

bool has(Position p, std::uint32_t flag) {
  return ((*p)->flags & flag) != 0;
}

void clearFlags(Vertex& vertex) {
  vertex.flags &= ~(kFixed | kStepMidpoint | kRemove);
}

float sign(float v) {
  return v > 0 ? 1.0f : v < 0 ? -1.0f : 0.0f;
}

struct Straight {
  double a, b, k, norm;

  Straight(const Vertex& from, const Vertex& to) {
    a = to.y - from.y;
    b = -(to.x - from.x);
    k = -(a * from.x + b * from.y);
    norm = std::sqrt(a * a + b * b);
  }

  double distance(const Vertex& v) const {
    if (0.01f > std::fabs(norm)) return 0;
    return (a * v.x + b * v.y + k) / norm;
  }
};

bool markCorner(Line& line, Position p0, VertexSet& vertices) {
  const Position end = line.points.end();
  if (p0 == end) return false;
  const Position p1 = std::next(p0);
  if (p1 == end) return false;
  const Position p2 = std::next(p1);
  if (p2 == end) return false;
  const float dx1 = (*p1)->x - (*p0)->x, dy1 = (*p1)->y - (*p0)->y;
  const float dx2 = (*p2)->x - (*p1)->x, dy2 = (*p2)->y - (*p1)->y;
  const float ax1 = std::fabs(dx1), ay1 = std::fabs(dy1);
  const float ax2 = std::fabs(dx2), ay2 = std::fabs(dy2);
  if ((ax1 > 2 && ay2 > 2) || (ay1 > 2 && ax2 > 2) || (ay1 == 2 && ax2 == 2) ||
      (ax1 == 2 && ay2 == 2)) {
    (*p1)->flags |= kFixed;
  } else if ((ax2 == 2 && ay1 > 2) || (ay2 == 2 && ax1 > 2)) {
    const VertexRef anchor =
        vertices.unify((*p1)->x - 0.5f * sign(dx1), (*p1)->y - 0.5f * sign(dy1));
    anchor->flags |= kFixed;
    line.points.insert(p1, anchor);
  } else if ((ay1 == 2 && ax2 > 2) || (ax1 == 2 && ay2 > 2)) {
    const VertexRef anchor =
        vertices.unify((*p1)->x + 0.5f * sign(dx2), (*p1)->y + 0.5f * sign(dy2));
    anchor->flags |= kFixed;
    line.points.insert(p2, anchor);
  }
  return true;
}

bool markStep(Line& line, Position p0, VertexSet& vertices) {
  if (has(p0, kStepMidpoint)) return true;
  const Position end = line.points.end();
  Position p1 = std::next(p0);
  if (p1 == end) return false;
  if (has(p1, kStepMidpoint)) ++p1;
  if (p1 == end) return false;
  const Position p2 = std::next(p1);
  if (p2 == end) return false;
  const Position p3 = std::next(p2);
  if (p3 == end) return false;
  if (has(p1, kFixed) && has(p2, kFixed)) return true;
  const Vertex &v0 = **p0, &v1 = **p1, &v2 = **p2, &v3 = **p3;
  if ((v1.x - v0.x) * (v2.x - v3.x) > 0 || (v1.y - v0.y) * (v2.y - v3.y) > 0) {
    VertexRef middle;
    if (v2.x != v1.x) {
      middle = vertices.unify(v1.x + (v2.x - v1.x) / 2, v1.y);
    } else if (v2.y != v1.y) {
      middle = vertices.unify(v1.x, v1.y + (v2.y - v1.y) / 2);
    }
    if (middle) {
      middle->flags |= kFixed | kStepMidpoint;
      line.points.insert(p2, middle);
    }
  }
  return true;
}

void clearInnerFlags(Line& line) {
  for (Position p = line.points.begin(); p != line.points.end(); ++p) {
    const bool isEnd = p == line.points.begin() || std::next(p) == line.points.end();
    if (line.closed || !isEnd) clearFlags(**p);
  }
}

void fixExtremes(Line& line) {
  Position greatest = line.points.begin(), smallest = line.points.begin();
  for (Position p = line.points.begin(); p != line.points.end(); ++p) {
    if ((*p)->x > (*greatest)->x) greatest = p;
    if ((*p)->x < (*smallest)->x) smallest = p;
  }
  (*greatest)->flags |= kFixed;
  (*smallest)->flags |= kFixed;
}

void markFixedVertices(Line& line, VertexSet& vertices) {
  std::list<VertexRef>& points = line.points;
  if (points.size() < 3) return;
  clearInnerFlags(line);
  if (line.closed) {
    points.push_front(*std::prev(points.end(), 2));
    points.push_back(*std::next(points.begin(), 2));
  }
  Position p = points.begin();
  if (line.closed) ++p;
  while (markCorner(line, p, vertices)) ++p;
  p = points.begin();
  while (p != points.end() && markStep(line, p, vertices)) ++p;
  if (!line.closed) return;

  points.pop_front();
  points.pop_back();
  int count = 0;
  for (p = std::next(points.begin()); p != points.end(); ++p) count += has(p, kFixed);
  if (count < 2) fixExtremes(line);
}

void insertMidpoints(Line& line, VertexSet& vertices) {
  Position p = line.points.begin();
  for (Position q = std::next(p); q != line.points.end(); p = q++) {
    if (has(p, kStepMidpoint) || has(q, kStepMidpoint)) continue;
    const Vertex &a = **p, &b = **q;
    line.points.insert(q, vertices.unify(a.x + (b.x - a.x) / 2, a.y + (b.y - a.y) / 2));
    if (!has(p, kFixed)) (*p)->flags |= kRemove;
    if (!has(q, kFixed)) (*q)->flags |= kRemove;
  }
}

double maxDeviation(Position first, Position last, Position& farthest) {
  if (std::next(first) == last) return 0;
  const Straight chord(**first, **last);
  double largest = 0;
  for (Position p = std::next(first); p != last; ++p) {
    const double deviation = std::fabs(chord.distance(**p));
    if (deviation > largest) {
      largest = deviation;
      farthest = p;
    }
  }
  return largest;
}

void split(Line& line, float tolerance) {
  float threshold = static_cast<float>(static_cast<double>(tolerance) - 0.5);
  if (threshold < 0) threshold = 0;
  if (line.points.empty()) return;
  std::vector<std::pair<Position, Position>> spans;
  Position anchor = line.points.begin();
  for (Position p = std::next(anchor); p != line.points.end(); ++p) {
    if (!has(p, kFixed)) continue;
    spans.emplace_back(anchor, p);
    anchor = p;
  }
  while (!spans.empty()) {
    const auto [first, last] = spans.back();
    spans.pop_back();
    Position farthest = line.points.end();
    const double deviation = maxDeviation(first, last, farthest);
    if (deviation >= threshold && farthest != line.points.end()) {
      (*farthest)->flags |= kFixed;
      spans.emplace_back(first, farthest);
      spans.emplace_back(farthest, last);
    }
  }
}

void resample(Line& line, int maxSegmentLength, VertexSet& vertices) {
  if (maxSegmentLength < 1 || line.points.empty()) return;
  Position p = line.points.begin();
  for (Position q = std::next(p); q != line.points.end(); p = q++) {
    const Vertex &a = **p, &b = **q;
    const float length = std::fabs(a.x - b.x) + std::fabs(a.y - b.y);
    const int n = static_cast<int>(std::floor(length / static_cast<float>(maxSegmentLength)));
    if (n < 1) continue;
    const float step = 1.0f / static_cast<float>(n + 1);
    for (int k = 1; k <= n; ++k) {
      const float t = static_cast<float>(k) * step;
      line.points.insert(q, vertices.unify(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)));
    }
  }
}

}  // namespace

void simplifyLine(Line& line, VertexSet& vertices, float tolerance, int maxSegmentLength) {
  std::list<VertexRef>& points = line.points;
  if (points.size() <= 2) return;
  markFixedVertices(line, vertices);
  if (line.closed) {
    while (!has(points.begin(), kFixed)) {
      points.pop_front();
      points.push_back(points.front());
    }
  }
  insertMidpoints(line, vertices);
  points.remove_if([](const VertexRef& v) { return (v->flags & kRemove) != 0; });
  clearInnerFlags(line);
  if (line.closed && !points.empty()) points.front()->flags |= kFixed;
  if (line.closed && points.size() >= 2) (*std::prev(points.end(), 2))->flags |= kFixed;
  split(line, tolerance);
  points.remove_if([](const VertexRef& v) { return (v->flags & kFixed) == 0; });
  if (maxSegmentLength != -1 && (!line.closed || points.size() > 3)) {
    resample(line, maxSegmentLength, vertices);
  }
}

}  // namespace reference
