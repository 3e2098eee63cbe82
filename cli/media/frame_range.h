// Which frames of a scene to write.
#pragma once

#include <string>

namespace cli {

// First and last frame, both rendered.
struct FrameRange {
  int first = 0;
  int last = 0;

  int count() const { return last - first + 1; }
};

// "A-B" or "A". Throws UsageError unless 0 <= A <= B.
FrameRange parseFrameRange(const std::string& text);

// "A-B", as that is read.
std::string rangeText(FrameRange range);

}  // namespace cli
