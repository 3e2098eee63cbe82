// Follows the borders between differently labeled regions of a mask.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "contour/border_codes.h"
#include "contour/raster.h"
#include "contour/vertex_set.h"

namespace brisel {

/// A traced line: its start, the corners where it turns, its end. Labels as seen in its direction.
struct CBorderLine {
  std::size_t cornerCount = 0;
  bool closed = false;  ///< it came back to its first corner, which is repeated at its end
  std::uint8_t rightLabel = 0;
  std::uint8_t leftLabel = 0;
};

/// Lines in the order in which they were found, and the corners of all of them, line after line.
struct BorderLines {
  std::vector<CBorderLine> lines;
  std::deque<Corner> corners;
};

class CBorderTracer {
 public:
  /// Both stay the caller's and must outlive the tracer.
  CBorderTracer(const TCRaster<std::uint8_t>& mask, CVertexSet& vertices);

  /// Traces every border of the mask once, the area outside being one more region; but of several
  /// lines that leave a junction, those that only end at other junctions may be left out. The
  /// corners join the vertex set, the ends of open lines as fixed vertices. Throws ContourError.
  BorderLines FindBorderLines();

 private:
  void TraceLine(Corner start, unsigned startCode);
  bool TraceDirection(bool forward, std::uint8_t label, Corner start);
  unsigned LookAhead(Corner place, std::uint8_t label, unsigned recent) const;
  void AddVertex(bool forward, Corner corner);
  void FinishLine();

  std::uint8_t& CodeAt(Corner corner) { return codes_.Row(corner.row)[corner.column]; }

  const TCRaster<std::uint8_t>& mask_;
  CVertexSet& vertices_;
  TCRaster<std::uint8_t> codes_;
  BorderLines found_;

  // The line being traced: the corners before its start, nearest first, then those from it on.
  CBorderLine line_;
  std::vector<Corner> before_;
  std::vector<Corner> after_;
};

}  // namespace brisel
