// The outlines of the input's alpha channel as emitter.
#pragma once

#include <cstdint>
#include <vector>

#include "core/image_view.h"
#include "engine/emitter.h"

namespace brisel {

struct ContourVertex {
  float x = 0.0f;  // pixels
  float y = 0.0f;
  float normalX = 0.0f;  // running average over the edges that use the vertex
  float normalY = 0.0f;
  bool hasNormal = false;
};

struct ContourEdge {
  std::int32_t first = 0;
  std::int32_t second = 0;
  float normalX = 0.0f;  // pointing out of the opaque region
  float normalY = 0.0f;
  float length = 0.0f;  // pixels
};

/// The contour of one render. One without edges emits at the frame's origin.
struct ContourEmitter {
  std::vector<ContourVertex> vertices;
  std::vector<ContourEdge> edges;
  std::vector<float> lengthBefore;  // sum of the lengths before each edge, and of all at the end
};

/// Traces the outlines of `mask`, a Mask8 image of the frame's size. A mask without an outline
/// gives the frame's border; a mask without pixels, or one that cannot be traced, no contour.
/// Throws std::bad_alloc.
ContourEmitter buildContourEmitter(const ImageView& mask, float resolutionScale);

/// The contour at `t` in [0, 1].
EmitterPoint evaluateContour(const ContourEmitter& contour, float t);

}  // namespace brisel
