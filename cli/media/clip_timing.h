// When the pictures of a clip are shown, and which constant rate stands for them.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "scene/frame_rate.h"

namespace cli {

// What a container says about one picture, in ticks of the stream's clock.
struct PictureTime {
  std::int64_t start = 0;
  std::int64_t duration = 0;  // 0: not said
  bool isKey = false;         // decoding can begin with it
};

// The rates and the clock that the container declares.
struct DeclaredTiming {
  double tick = 0;  // seconds
  std::optional<scene::FrameRate> nominal;
  std::optional<scene::FrameRate> average;
};

struct ClipTiming {
  scene::FrameRate rate;    // the clip's own: the one that most of its pictures keep
  bool isVariable = false;  // some of them do not
  double start = 0;         // of the first picture on the container's clock, in seconds
  double seconds = 0;       // from there to the end of the last picture
};

// Pictures in any order, at least one; the last one without a duration gets the usual one.
ClipTiming timingOf(std::vector<PictureTime> pictures, const DeclaredTiming& declared);

}  // namespace cli
