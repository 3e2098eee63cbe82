#include "contour/line_split.h"

namespace brisel {

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

}  // namespace brisel
