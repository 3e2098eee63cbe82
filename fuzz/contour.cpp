// Contours of any bitmap: the tracer against a walk along every border, the outlines that come of
// it, and the hulls against comparing all vertices.
#include <cmath>
#include <cstring>
#include <set>
#include <tuple>
#include <vector>

#include "bytes.h"
#include "contour/border_tracer.h"
#include "contour/mesh_builder.h"
#include "contour/outline_hulls.h"
#include "platform/pages.h"
#include "target.h"

namespace {

using brisel::Corner;
using fuzz::require;

struct Mask {
  std::int32_t width, height, stride;
  bool isTwoValued;
  std::vector<std::uint8_t> cells;

  std::size_t index(std::int32_t row, std::int32_t column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(stride) +
           static_cast<std::size_t>(column);
  }

  std::uint8_t at(std::int32_t row, std::int32_t column) const {
    const bool isInside = row >= 0 && row < height && column >= 0 && column < width;
    return isInside ? cells[index(row, column)] : brisel::kOutsideLabel;
  }
};

/// A bit for each pixel, or a byte; what lies between rows is of yet another value.
Mask readMask(fuzz::Bytes& bytes) {
  Mask mask;
  const bool isLarge = bytes.integerIn(0, 15) == 15;
  mask.width = bytes.integerIn(1, isLarge ? 200 : 24);
  mask.height = bytes.integerIn(1, isLarge ? 200 : 24);
  mask.stride = mask.width + bytes.integerIn(0, 3);
  mask.cells.assign(mask.index(mask.height, 0), 7);
  const int bitsPerPixel = bytes.oneOf({1, 2, 8});
  constexpr std::uint8_t kLabels[] = {0, 255, 1, brisel::kOutsideLabel};
  mask.isTwoValued = bitsPerPixel == 1;
  unsigned bits = 0;
  int bitsLeft = 0;
  for (std::int32_t row = 0; row < mask.height; ++row) {
    for (std::int32_t column = 0; column < mask.width; ++column, bitsLeft -= bitsPerPixel) {
      if (bitsLeft == 0) {
        bits = bytes.integer<std::uint8_t>();
        bitsLeft = 8;
      }
      const unsigned value = bits & ((1u << bitsPerPixel) - 1);
      bits >>= bitsPerPixel;
      mask.cells[mask.index(row, column)] =
          bitsPerPixel == 8 ? static_cast<std::uint8_t>(value) : kLabels[value];
    }
  }
  return mask;
}

/// An edge between two pixels, from its upper or left end.
using Edge = std::tuple<std::int32_t, std::int32_t, bool>;  // row, column, whether it runs down

std::set<Edge> bordersOf(const Mask& mask) {
  std::set<Edge> edges;
  for (std::int32_t row = 0; row <= mask.height; ++row) {
    for (std::int32_t column = 0; column <= mask.width; ++column) {
      if (mask.at(row, column) != mask.at(row - 1, column)) edges.emplace(row, column, false);
      if (mask.at(row, column) != mask.at(row, column - 1)) edges.emplace(row, column, true);
    }
  }
  return edges;
}

/// Whether three or more regions meet at the corner, so that lines end there.
bool isJunction(const Mask& mask, std::int32_t row, std::int32_t column) {
  const std::uint8_t nw = mask.at(row - 1, column - 1);
  const std::uint8_t ne = mask.at(row - 1, column);
  const std::uint8_t sw = mask.at(row, column - 1);
  const std::uint8_t se = mask.at(row, column);
  const int edges = (nw != ne) + (ne != se) + (se != sw) + (sw != nw);
  return edges == 3 || (edges == 4 && nw != se && ne != sw);
}

/// A line is only left out from junction to junction.
void requireLeftOutLinesEndAtJunctions(const Mask& mask, const std::set<Edge>& left) {
  for (const auto& [fromRow, fromColumn, isDown] : left) {
    for (const int end : {0, 1}) {
      const std::int32_t row = fromRow + (isDown ? end : 0);
      const std::int32_t column = fromColumn + (isDown ? 0 : end);
      const auto here = left.count({row, column, false}) + left.count({row, column, true}) +
                        left.count({row, column - 1, false}) + left.count({row - 1, column, true});
      require(here > 1 || isJunction(mask, row, column), "every border is traced");
    }
  }
}

/// Takes the line's edges out of `left`, and holds its labels against the mask.
template <class Corners>
void walk(const brisel::CBorderLine& line, Corners corner, const Mask& mask, std::set<Edge>& left) {
  Corner place = *corner;
  for (std::size_t i = 1; i < line.cornerCount; ++i) {
    const Corner next = *++corner;
    const auto sign = [](std::int32_t difference) { return (difference > 0) - (difference < 0); };
    const int down = sign(next.row - place.row);
    const int right = sign(next.column - place.column);
    require((down == 0) != (right == 0), "a line goes along one axis at a time");
    while (!(place == next)) {
      const Corner after{place.row + down, place.column + right};
      const std::int32_t row = std::min(place.row, after.row);
      const std::int32_t column = std::min(place.column, after.column);
      require(left.erase({row, column, down != 0}) == 1, "each edge of a border is traced once");
      const std::uint8_t here = mask.at(row, column);
      const std::uint8_t before = down != 0 ? mask.at(row, column - 1) : mask.at(row - 1, column);
      const bool hereIsRight = down != 0 ? down < 0 : right > 0;
      // Where three regions touch, a line may go on between two others.
      require(!mask.isTwoValued || (line.rightLabel == (hereIsRight ? here : before) &&
                                    line.leftLabel == (hereIsRight ? before : here)),
              "labels are the mask's");
      place = after;
    }
  }
}

/// Whether there is a way along all borders.
bool traceBorders(const Mask& mask) {
  brisel::TCRaster<std::uint8_t> raster(0, 0, brisel::kOutsideLabel);
  raster.LoadFromMemory(mask.height, mask.width, mask.stride, mask.cells.data());
  brisel::CVertexSet vertices(mask.width, mask.height);
  try {
    const brisel::BorderLines found = brisel::CBorderTracer(raster, vertices).FindBorderLines();
    std::set<Edge> left = bordersOf(mask);
    auto corner = found.corners.begin();
    for (const brisel::CBorderLine& line : found.lines) {
      walk(line, corner, mask, left);
      corner += static_cast<std::ptrdiff_t>(line.cornerCount);
    }
    require(corner == found.corners.end(), "every corner belongs to a line");
    requireLeftOutLinesEndAtJunctions(mask, left);
    return true;
  } catch (const brisel::ContourError&) {
    return false;
  }
}

struct Outlines {
  bool isTraced = true;
  std::vector<brisel::ContourPoint> points;
  std::vector<brisel::ContourSegment> segments;
};

template <class Item>
std::vector<Item> takeOver(Item* items, std::int32_t count) {
  std::vector<Item> taken(items, items + count);
  brisel::releasePages(items, taken.size() * sizeof(Item));
  return taken;
}

Outlines traceOutlines(brisel::CMeshBuilder& builder, const Mask& mask, float tolerance,
                       std::int32_t longest) {
  std::int32_t pointCount = 0, segmentCount = 0;
  brisel::ContourPoint* points = nullptr;
  brisel::ContourSegment* segments = nullptr;
  try {
    require(builder.LoadMask(mask.width, mask.height, mask.stride, mask.cells.data(), tolerance,
                             longest, pointCount, segmentCount, points, segments),
            "there is memory for small outlines");
  } catch (const brisel::ContourError&) {
    return {false, {}, {}};
  }
  return {true, takeOver(points, pointCount), takeOver(segments, segmentCount)};
}

void traceMask(fuzz::Bytes& bytes) {
  const float tolerance = bytes.real();
  const std::int32_t longest = bytes.integerIn(-128, 127);
  const Mask mask = readMask(bytes);
  brisel::CMeshBuilder builder;
  const Outlines outlines = traceOutlines(builder, mask, tolerance, longest);
  require(outlines.isTraced == traceBorders(mask), "outlines are traced where borders are");
  for (const auto& [x, y] : outlines.points) {
    require(x >= 0 && y >= 0 && x <= static_cast<float>(mask.width) &&
                y <= static_cast<float>(mask.height),
            "points lie in the mask");
  }
  std::uint32_t previous = 0;
  for (const auto& [first, second, reserved] : outlines.segments) {
    require(first >= previous && second == first + 1 && second < outlines.points.size() &&
                reserved == 0,
            "segments follow each other");
    previous = second;
  }
  const Outlines again = traceOutlines(builder, mask, tolerance, longest);
  const std::size_t pointBytes = outlines.points.size() * sizeof(brisel::ContourPoint);
  require(again.points.size() == outlines.points.size() &&
              again.segments.size() == outlines.segments.size() &&
              (pointBytes == 0 ||
               std::memcmp(again.points.data(), outlines.points.data(), pointBytes) == 0),
          "a second time gives the same");
}

void searchHulls(fuzz::Bytes& bytes) {
  brisel::VertexFlags flags = 0;
  std::vector<brisel::CMeshVertex> line;
  const auto count = static_cast<std::size_t>(bytes.integerIn(2, 600));
  const int kind = bytes.integerIn(0, 2);
  float x = 100.0f;
  float y = 100.0f;
  const auto step = [&] {
    const auto eighths = static_cast<float>(bytes.integer<std::int8_t>()) / 8.0f;
    return kind == 2 ? eighths / 3.0f : kind == 1 ? std::trunc(eighths) : eighths;
  };
  while (line.size() < count) {
    line.push_back({x, y, &flags});
    x += step();
    y += step();
  }
  brisel::COutlineHulls hulls;
  hulls.Build(line);
  for (int i = 0; i < 8; ++i) {
    const auto last = static_cast<int>(count) - 1;
    const int first = i == 0 ? 0 : bytes.integerIn(0, last - 1);
    const int end = i == 0 ? last : bytes.integerIn(first + 1, last);
    const brisel::CLine2D chord(line[static_cast<std::size_t>(first)],
                                line[static_cast<std::size_t>(end)]);
    brisel::Deviation most;
    for (auto k = static_cast<std::size_t>(first) + 1; k < static_cast<std::size_t>(end); ++k) {
      const double distance = std::abs(chord.Distance(line[k].x, line[k].y));
      if (distance > most.distance) most = {distance, k};
    }
    const auto found =
        hulls.MaxDeviation(static_cast<std::size_t>(first), static_cast<std::size_t>(end));
    require(found.distance == most.distance && found.index == most.index,
            "hulls find what comparing all vertices finds");
  }
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  Bytes bytes(input);
  if (bytes.integerIn(0, 3) == 3) {
    searchHulls(bytes);
  } else {
    traceMask(bytes);
  }
}
