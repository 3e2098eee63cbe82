// What every traced border keeps to, on random masks: each edge between pixels of different labels
// is traced once, with the right labels on its sides; closed lines are closed.
#include "contour/border_tracer.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "contour/contour_error.h"
#include "tests/contour/mask_shapes.h"

namespace brisel {
namespace {

struct TracedLine {
  std::vector<std::pair<int, int>> corners;  ///< x, y
  bool closed;
  int right;
  int left;
};

std::vector<TracedLine> borderLines(const reference::Mask& mask) {
  TCRaster<std::uint8_t> raster(0, 0, kOutsideLabel);
  raster.LoadFromMemory(mask.height, mask.width, mask.width, mask.cells.data());
  CVertexSet vertices(mask.width, mask.height);
  BorderLines found = CBorderTracer(raster, vertices).FindBorderLines();
  std::vector<TracedLine> lines;
  auto corner = found.corners.begin();
  for (const CBorderLine& line : found.lines) {
    lines.push_back({{}, line.closed, line.rightLabel, line.leftLabel});
    for (std::size_t i = 0; i < line.cornerCount; ++i, ++corner) {
      lines.back().corners.emplace_back(corner->column, corner->row);
    }
  }
  return lines;
}

using Edge = std::pair<std::pair<int, int>, std::pair<int, int>>;

/// How often each edge between pixels is traced; along the way, labels and ends are checked.
std::map<Edge, int> tracedEdges(const reference::Mask& mask) {
  const auto label = [&](int x, int y) -> int {
    const bool inside = x >= 0 && x < mask.width && y >= 0 && y < mask.height;
    return inside ? mask.at(y, x) : kOutsideLabel;
  };
  std::map<Edge, int> edges;
  for (const TracedLine& line : borderLines(mask)) {
    EXPECT_EQ(line.closed, line.corners.front() == line.corners.back());
    for (std::size_t i = 1; i < line.corners.size(); ++i) {
      auto [x, y] = line.corners[i - 1];
      const auto [endX, endY] = line.corners[i];
      const int dx = (endX > x) - (endX < x), dy = (endY > y) - (endY < y);
      EXPECT_TRUE((dx == 0) != (dy == 0));
      while (x != endX || y != endY) {
        // The pixels beside the edge, a quarter turn to the right and to the left of it.
        EXPECT_EQ(label(x - (dx < 0 || dy > 0), y - (dx < 0 || dy < 0)), line.right);
        EXPECT_EQ(label(x - (dx < 0 || dy < 0), y - (dx > 0 || dy < 0)), line.left);
        const std::pair<int, int> from{x, y};
        x += dx;
        y += dy;
        ++edges[std::minmax(from, std::pair<int, int>{x, y})];
      }
    }
  }
  return edges;
}

TEST(BorderTracer, TracesEveryBorderEdgeOnce) {
  int traceable = 0;
  for (std::uint32_t seed = 1; seed <= 3000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const reference::Mask mask = reference::anyShape(32, seed);
    if (mask.height == 1) continue;
    std::map<Edge, int> edges;
    try {
      edges = tracedEdges(mask);
    } catch (const ContourError&) {
      EXPECT_EQ(mask.height, 2);
      continue;
    }
    ++traceable;
    for (int y = 0; y < mask.height; ++y) {
      for (int x = 0; x < mask.width; ++x) {
        if (x > 0) {
          const int expected = mask.at(y, x - 1) != mask.at(y, x);
          const auto edge = edges.extract(Edge{{x, y}, {x, y + 1}});
          ASSERT_EQ(edge ? edge.mapped() : 0, expected) << x << ' ' << y;
        }
        if (y > 0) {
          const int expected = mask.at(y - 1, x) != mask.at(y, x);
          const auto edge = edges.extract(Edge{{x, y}, {x + 1, y}});
          ASSERT_EQ(edge ? edge.mapped() : 0, expected) << x << ' ' << y;
        }
      }
    }
    for (const auto& [edge, count] : edges) ASSERT_EQ(count, 1) << "along the frame";
    if (HasFailure()) return;
  }
  EXPECT_GT(traceable, 2500);
}

}  // namespace
}  // namespace brisel
