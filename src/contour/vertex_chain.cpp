#include "contour/vertex_chain.h"

#include <cmath>

namespace brisel {
namespace {

using Position = CVertexChain::Position;

/// The corner rules tell runs between two corners of this length from longer and shorter ones.
constexpr float kShortRun = 2.0f;

/// How far behind a corner an anchor stands on the longer of its two runs.
constexpr float kAnchorOffset = 0.5f;

float sign(float v) {
  return v > 0 ? 1.0f : v < 0 ? -1.0f : 0.0f;
}

/// Looks at the corner after `p0` and the runs before and behind it. Returns false when the line
/// ends before that.
bool MarkCorner(CVertexChain& line, Position p0, CVertexSet& vertices) {
  const Position p1 = line.Next(p0);
  const Position p2 = line.Next(p1);
  if (p2 == CVertexChain::kEnd) return false;
  const CMeshVertex v0 = line[p0], v1 = line[p1], v2 = line[p2];
  const float dx1 = v1.x - v0.x, dy1 = v1.y - v0.y;
  const float dx2 = v2.x - v1.x, dy2 = v2.y - v1.y;
  const auto isLong = [](float run) { return std::fabs(run) > kShortRun; };
  const auto isShort = [](float run) { return std::fabs(run) == kShortRun; };

  if ((isLong(dx1) && isLong(dy2)) || (isLong(dy1) && isLong(dx2)) ||
      (isShort(dy1) && isShort(dx2)) || (isShort(dx1) && isShort(dy2))) {
    v1.Set(kVertexFixed);
  } else if ((isLong(dy1) && isShort(dx2)) || (isLong(dx1) && isShort(dy2))) {
    const CMeshVertex anchor =
        vertices.Unify(v1.x - kAnchorOffset * sign(dx1), v1.y - kAnchorOffset * sign(dy1));
    anchor.Set(kVertexFixed);
    line.InsertAfter(p0, anchor);
  } else if ((isShort(dy1) && isLong(dx2)) || (isShort(dx1) && isLong(dy2))) {
    const CMeshVertex anchor =
        vertices.Unify(v1.x + kAnchorOffset * sign(dx2), v1.y + kAnchorOffset * sign(dy2));
    anchor.Set(kVertexFixed);
    line.InsertAfter(p1, anchor);
  }
  return true;
}

/// Looks at the run between the two vertices after `p0`: when the runs before and after it go
/// opposite ways, it is the top of a bump or the bottom of a notch and gets an anchor in its
/// middle. Returns false when the line ends before that.
bool MarkStep(CVertexChain& line, Position p0, CVertexSet& vertices) {
  if (line[p0].Has(kVertexStepMidpoint)) return true;
  Position p1 = line.Next(p0);
  if (p1 != CVertexChain::kEnd && line[p1].Has(kVertexStepMidpoint)) p1 = line.Next(p1);
  const Position p2 = line.Next(p1);
  const Position p3 = line.Next(p2);
  if (p3 == CVertexChain::kEnd) return false;
  const CMeshVertex v0 = line[p0], v1 = line[p1], v2 = line[p2], v3 = line[p3];
  if (v1.Has(kVertexFixed) && v2.Has(kVertexFixed)) return true;

  const bool opposite = (v1.x - v0.x) * (v2.x - v3.x) > 0 || (v1.y - v0.y) * (v2.y - v3.y) > 0;
  if (!opposite || (v1.x == v2.x && v1.y == v2.y)) return true;
  const CMeshVertex middle = v2.x != v1.x ? vertices.Unify(v1.x + (v2.x - v1.x) / 2, v1.y)
                                          : vertices.Unify(v1.x, v1.y + (v2.y - v1.y) / 2);
  middle.Set(kVertexFixed | kVertexStepMidpoint);
  line.InsertAfter(p1, middle);
  return true;
}

void clearFlags(const CVertexChain& line, bool closed) {
  Position begin = line.First(), end = CVertexChain::kEnd;
  if (!closed) {
    begin = line.Next(begin);
    end = line.Last();
  }
  for (Position p = begin; p != end; p = line.Next(p)) line[p].ClearAll();
}

/// A ring without two anchors could not be split: its rightmost and leftmost vertices become some.
void fixExtremes(const CVertexChain& ring) {
  Position rightmost = ring.First(), leftmost = ring.First();
  std::size_t fixedCount = 0;
  for (Position p = ring.Next(ring.First()); p != CVertexChain::kEnd; p = ring.Next(p)) {
    fixedCount += ring[p].Has(kVertexFixed);
    if (ring[p].x > ring[rightmost].x) rightmost = p;
    if (ring[p].x < ring[leftmost].x) leftmost = p;
  }
  if (fixedCount >= 2) return;
  ring[rightmost].Set(kVertexFixed);
  ring[leftmost].Set(kVertexFixed);
}

}  // namespace

void MarkFixedVertices(CVertexChain& line, bool closed, CVertexSet& vertices) {
  if (line.Size() < 3) return;
  clearFlags(line, closed);
  if (closed) {
    // The ring's neighbors beyond its seam, so that every vertex is seen with both of its own.
    line.PushFront(line[line.Previous(line.Last())]);
    line.PushBack(line[line.Next(line.Next(line.First()))]);
  }

  Position p = closed ? line.Next(line.First()) : line.First();
  while (MarkCorner(line, p, vertices)) p = line.Next(p);
  p = line.First();
  while (p != CVertexChain::kEnd && MarkStep(line, p, vertices)) p = line.Next(p);

  if (closed) {
    line.PopFront();
    line.PopBack();
    fixExtremes(line);
  }
}

}  // namespace brisel
