// The mask of a layer: an outline over time.
#pragma once

#include <vector>

#include "engine/mask_outline.h"
#include "scene/keyframe.h"

namespace scene {

/// Pixels of the frame at full size.
struct MaskPoint {
  double x = 0;
  double y = 0;
};

/// A mask at one moment.
struct MaskShape {
  struct Vertex {
    MaskPoint point;
    MaskPoint in;  // Bezier control points before and after it, not offsets
    MaskPoint out;
  };
  std::vector<Vertex> vertices;
  bool closed = true;
};

struct Mask {
  using Key = KeyOf<MaskShape>;
  /// One for a mask that stands still; else keyframes, all closed or all open, and with as many
  /// vertices.
  std::vector<Key> keys;
  bool inverted = false;  // the outline runs the other way
};

/// From key to key as they say, vertex by vertex; before the first and after the last key those
/// hold. The keys' times are frames.
MaskShape shapeAt(const Mask& mask, double frame);

/// The same as the effect takes it.
brisel::MaskOutline outlineAt(const Mask& mask, double frame);

}  // namespace scene
