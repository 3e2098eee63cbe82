// The mask of a scene: an outline over time.
#pragma once

#include <vector>

#include "cli/media/frame_rate.h"
#include "hostkit/masks.h"

namespace cli {

struct Mask {
  struct Key {
    double frame;
    hostkit::MaskShape shape;
  };
  // One for a mask that stands still; else in order of their frames, all closed or all open, and
  // with as many vertices.
  std::vector<Key> keys;
  bool inverted = false;
};

// Straight from key to key, vertex by vertex; before the first and after the last key those hold.
hostkit::MaskShape shapeAt(const Mask& mask, double frame);

// The frame that begins at the host's time, with its fraction.
double frameAt(const hostkit::MaskTime& time, FrameRate rate);

}  // namespace cli
