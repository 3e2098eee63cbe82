// Traces the outlines of a mask: the borders between regions of different values, as polylines.
#pragma once

#include <cstdint>
#include <stdexcept>

#include "contour/raster.h"

namespace brisel {

/// In pixels of the mask: x to the right, y downwards, (0, 0) its top-left corner.
struct ContourPoint {
  float x;
  float y;
};

/// Indices of a segment's ends in the array of points.
struct ContourSegment {
  std::uint32_t first;
  std::uint32_t second;
  std::uint32_t reserved;  ///< 0
};

/// A mask cannot be traced.
class ContourError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class CMeshBuilder {
 public:
  CMeshBuilder();

  /// Traces a mask of one byte per pixel, from the top row down, `stride` bytes from one row's
  /// start to the next. `tolerance` (above 0, to 10; 0 or less means 1) less half a pixel is how
  /// far an outline may stray from the vertices it leaves out. Segments get no longer than
  /// `maxSegmentLength` (2 to 30), counted along x and y.
  ///
  /// The outlines follow each other in the arrays, each with one segment less than it has points.
  /// A closed one ends with its first point and runs clockwise around the region inside. Borders
  /// with the area outside the mask are left out. When no outline is left, the counts are 0 and
  /// `points` and `segments` keep what they held; otherwise both belong to the caller, who hands
  /// them to releasePages with the size of all their elements.
  ///
  /// Returns false, with counts of 0, when there is no memory for the arrays. Throws ContourError
  /// when the mask cannot be traced, and std::bad_alloc when memory runs out earlier.
  bool LoadMask(std::int32_t width, std::int32_t height, std::int32_t stride,
                const std::uint8_t* maskBytes, float tolerance, std::int32_t maxSegmentLength,
                std::int32_t& pointCount, std::int32_t& segmentCount, ContourPoint*& points,
                ContourSegment*& segments);

 private:
  TCRaster<std::uint8_t> mask_;
};

}  // namespace brisel
