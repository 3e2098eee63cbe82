#include "contour/outline_hulls.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace brisel {
namespace {

Deviation comparingAll(const std::vector<CMeshVertex>& line, std::size_t first, std::size_t last) {
  const CLine2D chord(line[first], line[last]);
  Deviation most;
  for (std::size_t i = first + 1; i < last; ++i) {
    const double distance = std::fabs(chord.Distance(line[i].x, line[i].y));
    if (distance > most.distance) most = {distance, i};
  }
  return most;
}

/// A comb along a slope of `rise` pixels per tooth: its teeth end on one straight line, so that
/// many vertices are equally far away. `stray` is the share of vertices off the pixels' grid.
std::vector<CMeshVertex> comb(std::size_t length, float rise, double stray, std::mt19937& random) {
  std::bernoulli_distribution isStray(stray);
  std::vector<CMeshVertex> line;
  float x = 100, y = 100;
  for (std::size_t i = 0; i < length; ++i) {
    (i % 2 == 0 ? x : y) += i % 2 == 0 ? 1.0f : (i % 4 == 1 ? 3.0f : rise - 3.0f);
    const float offset = isStray(random) ? 0.3f / static_cast<float>(1 + random() % 100) : 0.0f;
    line.push_back({x + offset, y - offset, nullptr});
  }
  return line;
}

std::vector<CMeshVertex> walk(std::size_t length, std::mt19937& random) {
  std::vector<CMeshVertex> line;
  float x = 500, y = 500;
  for (std::size_t i = 0; i < length; ++i) {
    (i % 2 == 0 ? x : y) += 0.5f * static_cast<float>(static_cast<int>(random() % 7) - 3);
    line.push_back({x, y, nullptr});
  }
  return line;
}

TEST(OutlineHulls, FindTheFirstOfTheFarthest) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::size_t length = 2 + random() % 3000;
    const double stray = seed % 4 == 0 ? 0.01 : 0.0;
    const std::vector<CMeshVertex> line =
        seed % 3 == 0 ? walk(length, random)
                      : comb(length, static_cast<float>(seed % 3 - 1), stray, random);
    COutlineHulls hulls;
    hulls.Build(line);
    for (int i = 0; i < 300; ++i) {
      std::size_t first = random() % length, last = random() % length;
      if (i % 3 == 0) std::tie(first, last) = std::pair{first / 8, length - 1 - last / 8};
      if (first >= last) continue;
      const Deviation expected = comparingAll(line, first, last);
      const Deviation found = hulls.MaxDeviation(first, last);
      ASSERT_EQ(found.distance, expected.distance) << first << " to " << last;
      ASSERT_EQ(found.index, expected.index) << first << " to " << last;
    }
  }
}

}  // namespace
}  // namespace brisel
