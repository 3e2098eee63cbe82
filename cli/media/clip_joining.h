// Parts of a clip, put together without being encoded again.
#pragma once

#include <optional>
#include <vector>

#include "cli/media/clip_part.h"
#include "cli/media/soundtrack.h"

namespace cli {

// The frames that the parts hold together, once they are sorted by their first. Throws WorkError
// naming two of them when there is a gap, when they overlap or when a setting differs.
FrameRange sortAndCheckParts(std::vector<PartFile>& parts);

// Writes the clip. Its pictures are those of the parts, bit for bit, and its sound is cut and
// copied or encoded once for the whole of it, as one render would. Throws WorkError naming the
// output.
void joinParts(const std::vector<PartFile>& parts, const OutputTarget& output,
               const std::optional<Soundtrack>& sound);

}  // namespace cli
