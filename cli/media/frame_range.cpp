#include "cli/media/frame_range.h"

#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {

FrameRange parseFrameRange(const std::string& text) {
  const std::size_t dash = text.find('-', 1);
  const auto first = scene::parseInteger(text.substr(0, dash));
  const auto last = dash == std::string::npos ? first : scene::parseInteger(text.substr(dash + 1));
  if (!first || !last || *first < 0 || *last < *first) {
    throw UsageError("--frames " + inQuotes(text) +
                     ": a range is FIRST-LAST or one number, counted from 0, such as 0-99");
  }
  return {*first, *last};
}

std::string rangeText(FrameRange range) {
  return std::to_string(range.first) + "-" + std::to_string(range.last);
}

}  // namespace cli
