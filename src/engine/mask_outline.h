// A mask of the layer as emitter: a chain of cubic Bézier segments, weighted by length.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/bezier.h"
#include "engine/emitter.h"

namespace brisel {

/// One vertex, pixels; the tangents are the Bézier control points before and after it.
struct MaskVertex {
  PointF point;
  PointF in;
  PointF out;
};

/// The outline of one render. It emits only if it has vertices.
struct MaskOutline {
  bool isOpen = false;
  bool isDegenerate = false;         // shorter than 0.00001 pixels
  std::vector<MaskVertex> vertices;  // in the direction of travel
  std::vector<float> segmentLength;  // of the segment that starts at each vertex, pixels
  std::vector<float> segmentShare;   // its share of the whole outline
  std::vector<float> shareBefore;    // sum of the shares before each segment, and of all at the end
  float outlineLength = 0.0f;        // pixels

  std::size_t vertexCount() const { return vertices.size(); }
  CubicBezier segment(std::size_t k) const;
};

/// Weighs the outline's segments. `vertices` are in the host's order; an inverted outline is turned
/// to run the other way. A single vertex is an open outline.
MaskOutline buildMaskOutline(std::vector<MaskVertex> vertices, bool isOpen, bool isInverted);

/// The outline, which has vertices, at `t` in [0, 1].
EmitterPoint evaluateMaskOutline(const MaskOutline& outline, float t);

}  // namespace brisel
