// The mask of a scene: an outline over time.
#pragma once

#include <vector>

#include "cli/media/frame_rate.h"
#include "cli/scene/keyframe.h"
#include "hostkit/masks.h"

namespace cli {

struct Mask {
  using Key = KeyOf<hostkit::MaskShape>;
  // One for a mask that stands still; else keyframes, all closed or all open, and with as many
  // vertices.
  std::vector<Key> keys;
  bool inverted = false;
};

// From key to key as they say, vertex by vertex; before the first and after the last key those
// hold. The times are frames.
hostkit::MaskShape shapeAt(const Mask& mask, double frame);

// The frame that begins at the host's time, with its fraction.
double frameAt(const hostkit::MaskTime& time, FrameRate rate);

}  // namespace cli
