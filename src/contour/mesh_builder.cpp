#include "contour/mesh_builder.h"

#include <algorithm>
#include <deque>
#include <vector>

#include "contour/border_tracer.h"
#include "contour/line_simplifier.h"
#include "contour/vertex_set.h"
#include "platform/page_array.h"

namespace brisel {
namespace {

constexpr float kDefaultTolerance = 1.0f;
constexpr float kMaxTolerance = 10.0f;
constexpr std::int32_t kLeastSegmentLength = 2;
constexpr std::int32_t kMostSegmentLength = 30;

/// The points of all lines, line after line, and how many each line has.
struct Outlines {
  std::deque<ContourPoint> points;
  std::vector<std::size_t> lineSizes;
};

bool isOutline(const CBorderLine& line, std::size_t pointCount) {
  if (line.closed && pointCount < 4) return false;
  return line.rightLabel != kOutsideLabel && line.leftLabel != kOutsideLabel && pointCount >= 2;
}

Outlines traceOutlines(const TCRaster<std::uint8_t>& mask, float tolerance,
                       std::int32_t maxSegmentLength) {
  std::int32_t height = 0, width = 0;
  mask.GetSize(&height, &width);
  CVertexSet vertices(width, height);
  BorderLines borders = CBorderTracer(mask, vertices).FindBorderLines();
  CLineSimplifier simplifier(vertices, tolerance, maxSegmentLength);
  Outlines outlines;
  // Lines that are no outlines are simplified too: others share their vertices.
  for (const CBorderLine& line : borders.lines) {
    const std::vector<CMeshVertex>& simplified = simplifier.SimplifyLine(line, borders.corners);
    if (!isOutline(line, simplified.size())) continue;
    for (const CMeshVertex& v : simplified) outlines.points.push_back({v.x, v.y});
    outlines.lineSizes.push_back(simplified.size());
  }
  return outlines;
}

/// Moves the points over, giving back the memory they took while the array takes its own.
void movePoints(std::deque<ContourPoint>& from, ContourPoint* to) {
  for (; !from.empty(); from.pop_front()) *to++ = from.front();
}

void writeSegments(const std::vector<std::size_t>& lineSizes, ContourSegment* segment) {
  std::uint32_t point = 0;
  for (const std::size_t size : lineSizes) {
    for (std::size_t i = 1; i < size; ++i, ++point, ++segment) {
      segment->first = point;
      segment->second = point + 1;
    }
    ++point;
  }
}

}  // namespace

CMeshBuilder::CMeshBuilder() : mask_(0, 0, kOutsideLabel) {}

bool CMeshBuilder::LoadMask(std::int32_t width, std::int32_t height, std::int32_t stride,
                            const std::uint8_t* maskBytes, float tolerance,
                            std::int32_t maxSegmentLength, std::int32_t& pointCount,
                            std::int32_t& segmentCount, ContourPoint*& points,
                            ContourSegment*& segments) {
  pointCount = segmentCount = 0;
  if (tolerance <= 0) tolerance = kDefaultTolerance;
  tolerance = std::min(tolerance, kMaxTolerance);
  maxSegmentLength = std::clamp(maxSegmentLength, kLeastSegmentLength, kMostSegmentLength);
  if (!mask_.LoadFromMemory(height, width, stride, maskBytes)) {
    throw ContourError("Error! CMeshBuilder::LoadMask: Cannot load input mask!");
  }
  Outlines outlines = traceOutlines(mask_, tolerance, maxSegmentLength);
  if (outlines.points.empty()) return true;

  const std::size_t pointTotal = outlines.points.size();
  const std::size_t segmentTotal = pointTotal - outlines.lineSizes.size();
  auto pointArray = allocatePageArray<ContourPoint>(pointTotal);
  auto segmentArray = allocatePageArray<ContourSegment>(segmentTotal);
  if (!pointArray || !segmentArray) return false;
  movePoints(outlines.points, pointArray.get());
  writeSegments(outlines.lineSizes, segmentArray.get());
  pointCount = static_cast<std::int32_t>(pointTotal);
  segmentCount = static_cast<std::int32_t>(segmentTotal);
  points = pointArray.release();
  segments = segmentArray.release();
  return true;
}

}  // namespace brisel
