// The tracer on masks worked out by hand, and on thousands of others against digests of the points,
// segments and errors they are known to have.
#include <gtest/gtest.h>

#include <bit>
#include <random>
#include <string>
#include <vector>

#include "contour/mesh_builder.h"
#include "platform/pages.h"
#include "tests/contour/mask_shapes.h"

namespace brisel {

namespace {

using Points = std::vector<std::pair<float, float>>;

struct Contour {
  std::string error;  // empty when none was raised
  Points points;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> segments;
};

Contour traced(const reference::Mask& mask, float tolerance = 1.0f, int maxSegmentLength = 30) {
  Contour result;
  std::int32_t pointCount = 0, segmentCount = 0;
  ContourPoint* points = nullptr;
  ContourSegment* segments = nullptr;
  try {
    CMeshBuilder().LoadMask(mask.width, mask.height, mask.width, mask.cells.data(), tolerance,
                            maxSegmentLength, pointCount, segmentCount, points, segments);
  } catch (const ContourError& error) {
    result.error = error.what();
  }
  for (int i = 0; i < pointCount; ++i) result.points.emplace_back(points[i].x, points[i].y);
  for (int i = 0; i < segmentCount; ++i) {
    result.segments.emplace_back(segments[i].first, segments[i].second);
    EXPECT_EQ(segments[i].reserved, 0u);
  }
  releasePages(points, result.points.size() * sizeof(ContourPoint));
  releasePages(segments, result.segments.size() * sizeof(ContourSegment));
  return result;
}

/// '#' is opaque, every other character transparent.
reference::Mask drawn(const std::vector<std::string>& rows) {
  reference::Mask mask{static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), {}};
  for (const std::string& row : rows) {
    for (char c : row) mask.cells.push_back(c == '#' ? 255 : 0);
  }
  return mask;
}

TEST(Contour, TracesSmallMasksAsWorkedOutByHand) {
  struct Case {
    const char* why;
    std::vector<std::string> mask;
    Points points;
  };
  const Case cases[] = {
      {"all sides of a pixel are bumps and get a middle",
       {".....", ".....", "..#..", ".....", "....."},
       {{2.5, 2}, {3, 3}, {2, 3}, {2, 2}, {2.5, 2}}},
      {"the tip of a bump stays",
       {".........", "....#....", ".#######.", ".#######.", ".#######.", "........."},
       {{4.5, 1}, {8, 2}, {8, 5}, {1, 5}, {1, 2}, {4, 1.5}, {4.5, 1}}},
      {"the bottom of a notch stays",
       {".........", ".###.###.", ".#######.", ".#######.", "........."},
       {{1, 1}, {4.5, 2}, {8, 1}, {8, 4}, {1, 4}, {1, 2.5}, {1, 1}}},
      {"a shape comes before its hole",
       {".....", ".###.", ".#.#.", ".###.", "....."},
       {{1, 1},
        {4, 1},
        {4, 4},
        {1, 4},
        {1, 2.5},
        {1, 1},
        {2.5, 2},
        {3, 3},
        {2, 3},
        {2, 2},
        {2.5, 2}}},
      {"the frame is left out", {"....", "##..", "##..", "...."}, {{0, 1}, {2, 1}, {2, 3}, {0, 3}}},
      {"nothing", {"....", "...."}, {}},
      {"everything", {"####", "####"}, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_EQ(traced(drawn(c.mask)).points, c.points);
  }
}

TEST(Contour, StraightensAStaircase) {
  reference::Mask mask = reference::empty(8, 8);
  for (int row = 0; row < 8; ++row) {
    for (int column = 0; column < row; ++column) mask.at(row, column) = 255;
  }
  EXPECT_EQ(traced(mask).points, (Points{{0, 1}, {7, 8}}));
  // 14 pixels along x and y are three times 4 and some more: four equal parts.
  EXPECT_EQ(traced(mask, 1.0f, 4).points,
            (Points{{0, 1}, {1.75, 2.75}, {3.5, 4.5}, {5.25, 6.25}, {7, 8}}));
}

TEST(Contour, BringsItsArgumentsIntoRangeAndSaysWhyItCannotTrace) {
  const reference::Mask mask = reference::disc(200, 200);
  EXPECT_EQ(traced(mask, -1.0f).points, traced(mask, 1.0f).points);
  EXPECT_EQ(traced(mask, 50.0f).points, traced(mask, 10.0f).points);
  EXPECT_EQ(traced(mask, 1.0f, -5).points, traced(mask, 1.0f, 2).points);
  EXPECT_EQ(traced(mask, 1.0f, 500).points, traced(mask, 1.0f, 30).points);
  EXPECT_EQ(traced({5, -1, {}}).error, "Error! CMeshBuilder::LoadMask: Cannot load input mask!");
  // From the touching corners every way on leads straight to the frame.
  EXPECT_EQ(traced(drawn({".#.", "..#"})).error,
            "Error! CMeshBuilder::TraceDirection: Cannot trace line.");
}

/// FNV-1a over contours, a number at a time.
class Digest {
 public:
  void add(const reference::Mask& mask, float tolerance, int maxSegmentLength) {
    const Contour contour = traced(mask, tolerance, maxSegmentLength);
    for (const char c : contour.error) add(static_cast<std::uint8_t>(c));
    for (const auto& [x, y] : contour.points) {
      EXPECT_TRUE(x >= 0 && y >= 0 && x <= static_cast<float>(mask.width) &&
                  y <= static_cast<float>(mask.height));
      add(std::bit_cast<std::uint32_t>(x));
      add(std::bit_cast<std::uint32_t>(y));
    }
    for (const auto& [first, second] : contour.segments) {
      EXPECT_TRUE(first < contour.points.size() && second < contour.points.size());
      add(first);
      add(second);
    }
  }
  std::uint64_t value = 14695981039346656037u;

 private:
  void add(std::uint32_t number) { value = (value ^ number) * 1099511628211u; }
};

TEST(Contour, TracesThousandsOfSmallMasksAsKnown) {
  Digest digest;
  for (std::uint32_t seed = 1; seed <= 5000; ++seed) {
    reference::Mask mask = reference::anyShape(64, seed);
    std::mt19937 random(seed);
    const bool odd = random() % 3 == 0;
    const float tolerance = odd ? static_cast<float>(random() % 1000) / 100.0f : 1.0f;
    if (odd) mask = reference::relabeled(mask, seed);
    digest.add(mask, tolerance, 2 + static_cast<int>(random() % 29));
  }
  EXPECT_EQ(digest.value, 8211781799088675600u);
}

TEST(Contour, TracesLongOutlinesAsKnown) {
  Digest digest;
  for (const reference::Mask& mask :
       {reference::disc(500, 500), reference::title(600, 200), reference::noise(160, 160, 0.55, 1),
        reference::checkerboard(100, 100), reference::notchedSpiral(240, 180)}) {
    digest.add(mask, 1.0f, 30);
    digest.add(mask, 1.0f, 3);
  }
  for (std::uint32_t seed = 1; seed <= 12; ++seed) {
    digest.add(reference::anyShape(300, seed), 1.0f, 30);
  }
  EXPECT_EQ(digest.value, 17479922853099353362u);
}

}  // namespace
}  // namespace brisel
