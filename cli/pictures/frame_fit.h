// Pictures of one size in frames of another.
#pragma once

#include "cli/pictures/frame.h"

namespace cli {

// The picture scaled to fit the size, keeping its aspect, and centered on transparent. Scaled
// premultiplied, so that colors hidden under alpha 0 do not bleed into the edges. A picture of
// that size is returned as it is.
Frame fittedFrame(const Frame& picture, FrameSize size);

}  // namespace cli
