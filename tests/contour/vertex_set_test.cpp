#include "contour/vertex_set.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <string>

namespace brisel {
namespace {

/// Vertices by x, then y, and the flags the module gave them.
using PlainSet = std::map<std::pair<float, float>, VertexFlags*>;

/// The vertex next to (x, y) in order, if it lies less than 0.01 from it in either coordinate, or
/// else a new one.
PlainSet::iterator unify(PlainSet& set, float x, float y) {
  const auto next = set.lower_bound({x, y});
  const auto equals = [&](const PlainSet::iterator& at) {
    return std::fabs(at->first.first - x) < 0.01f && std::fabs(at->first.second - y) < 0.01f;
  };
  if (next != set.end() && equals(next)) return next;
  if (next != set.begin() && equals(std::prev(next))) return std::prev(next);
  return set.emplace(std::pair{x, y}, nullptr).first;
}

// Vertices on the edges between pixels and a little off them, across the borders of pixels and
// beyond the frame, in places far apart along one narrow strip so that they come between each
// other in order, against an ordered set of them all.
TEST(VertexSet, FindsTheSameVertexAsAnOrderedSet) {
  for (std::uint32_t seed = 1; seed <= 400; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    CVertexSet vertices(1, 100);
    PlainSet plain;
    const auto coordinate = [&](int extent) {
      const auto step = static_cast<float>(random() % static_cast<unsigned>(extent * 12 + 1));
      const auto offset = static_cast<float>(static_cast<int>(random() % 9) - 4);
      return step / 12.0f + (random() % 2 == 0 ? 0.0f : offset * 0.004f);
    };
    for (int i = 0; i < 300; ++i) {
      const float x = coordinate(1), y = coordinate(1) + static_cast<float>(random() % 99);
      const CMeshVertex vertex = vertices.Unify(x, y);
      const auto expected = unify(plain, x, y);
      ASSERT_EQ(std::pair(vertex.x, vertex.y), expected->first);
      if (expected->second == nullptr) expected->second = vertex.flags;
      ASSERT_EQ(vertex.flags, expected->second);
    }
  }
}

}  // namespace
}  // namespace brisel
