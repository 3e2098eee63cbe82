#include "contour/line_simplifier.h"

#include <algorithm>
#include <cmath>

namespace brisel {
namespace {

/// How far a line may stray from its vertices.
float splitThreshold(float tolerance) {
  const auto threshold = static_cast<float>(double{tolerance} - 0.5);
  return threshold < 0 ? 0 : threshold;
}

}  // namespace

void CLineSplitter::SplitLine(std::span<const CMeshVertex> points, float threshold) {
  spans_.clear();
  std::size_t anchor = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (!points[i].Has(kVertexFixed)) continue;
    spans_.emplace_back(anchor, i);
    anchor = i;
  }
  hulls_.Build(points);
  while (!spans_.empty()) {
    const auto [first, last] = spans_.back();
    spans_.pop_back();
    const Deviation most = hulls_.MaxDeviation(first, last);
    if (most.distance > 0 && most.distance >= threshold) {
      points[most.index].Set(kVertexFixed);
      spans_.emplace_back(first, most.index);
      spans_.emplace_back(most.index, last);
    }
  }
}

CLineSimplifier::CLineSimplifier(CVertexSet& vertices, float tolerance,
                                 std::int32_t maxSegmentLength)
    : vertices_(vertices),
      threshold_(splitThreshold(tolerance)),
      maxSegmentLength_(static_cast<float>(maxSegmentLength)) {}

const std::vector<CMeshVertex>& CLineSimplifier::SimplifyLine(const CBorderLine& line,
                                                              std::deque<Corner>& corners) {
  TakeCorners(line.cornerCount, corners);
  if (chain_.Size() > 2) MarkFixedVertices(chain_, line.closed, vertices_);
  points_.clear();
  for (auto p = chain_.First(); p != CVertexChain::kEnd; p = chain_.Next(p)) {
    points_.push_back(chain_[p]);
  }
  if (points_.size() <= 2) return points_;

  if (line.closed) StartAtFixedVertex();
  InsertMidpoints();
  std::erase_if(points_, [](const CMeshVertex& v) { return v.Has(kVertexRemove); });
  ResetFlags(line.closed);
  splitter_.SplitLine(points_, threshold_);
  std::erase_if(points_, [](const CMeshVertex& v) { return !v.Has(kVertexFixed); });
  if (!line.closed || points_.size() > 3) ResampleLine();
  return points_;
}

void CLineSimplifier::TakeCorners(std::size_t count, std::deque<Corner>& corners) {
  chain_.Clear();
  for (; count > 0; --count) {
    chain_.PushBack(vertices_.CornerVertex(corners.front()));
    corners.pop_front();
  }
}

/// Turns the ring to the first fixed vertex, which then stands at its end as well.
void CLineSimplifier::StartAtFixedVertex() {
  const auto start = std::find_if(points_.begin(), points_.end(),
                                  [](const CMeshVertex& v) { return v.Has(kVertexFixed); });
  if (start == points_.begin() || start == points_.end()) return;
  const CMeshVertex fixed = *start;
  std::rotate(points_.begin(), start, points_.end());
  points_.erase(points_.end() - (start - points_.begin()));
  points_.push_back(fixed);
}

/// Replaces the corners that carry no shape by the middles of the runs between them. A removed
/// vertex may stand at several places, so all are marked before any is removed.
void CLineSimplifier::InsertMidpoints() {
  refined_.clear();
  refined_.push_back(points_.front());
  for (std::size_t i = 1; i < points_.size(); ++i) {
    const CMeshVertex &p = points_[i - 1], &q = points_[i];
    if (!p.Has(kVertexStepMidpoint) && !q.Has(kVertexStepMidpoint)) {
      refined_.push_back(vertices_.Unify(p.x + (q.x - p.x) / 2, p.y + (q.y - p.y) / 2));
      if (!p.Has(kVertexFixed)) p.Set(kVertexRemove);
      if (!q.Has(kVertexFixed)) q.Set(kVertexRemove);
    }
    refined_.push_back(q);
  }
  std::swap(points_, refined_);
}

/// Leaves only the vertices fixed between which the split starts: the ends of an open line, the
/// seam of a closed one and the vertex before it.
void CLineSimplifier::ResetFlags(bool closed) {
  if (points_.empty()) return;
  if (closed) {
    for (const CMeshVertex& v : points_) v.ClearAll();
    points_.front().Set(kVertexFixed);
    if (points_.size() >= 2) points_[points_.size() - 2].Set(kVertexFixed);
  } else {
    for (std::size_t i = 1; i + 1 < points_.size(); ++i) points_[i].ClearAll();
  }
}

/// Divides every long segment into equal parts.
void CLineSimplifier::ResampleLine() {
  if (points_.empty()) return;
  refined_.clear();
  refined_.push_back(points_.front());
  for (std::size_t i = 1; i < points_.size(); ++i) {
    const CMeshVertex &a = points_[i - 1], &b = points_[i];
    const float length = std::fabs(a.x - b.x) + std::fabs(a.y - b.y);
    const auto added = static_cast<std::int32_t>(std::floor(length / maxSegmentLength_));
    const float step = 1.0f / static_cast<float>(added + 1);
    for (std::int32_t k = 1; k <= added; ++k) {
      const float t = static_cast<float>(k) * step;
      refined_.push_back(vertices_.Unify(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)));
    }
    refined_.push_back(b);
  }
  std::swap(points_, refined_);
}

}  // namespace brisel
