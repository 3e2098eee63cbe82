// What may be written where, found out before any work is done.
#pragma once

#include <filesystem>
#include <vector>

#include "cli/media/frame_range.h"
#include "cli/media/output_target.h"
#include "cli/pictures/frame.h"

namespace cli {

// The frames of the range that are to be written: all of them, or with skipExisting those whose
// files are not there or not complete. Throws UsageError when the range or the depth does not fit
// the kind of output, and WorkError when the folder is missing or not writable, or an output is
// there and neither overwrite nor skipExisting is asked for.
std::vector<int> framesToWrite(const OutputTarget& target, FrameRange range, Depth depth,
                               const OutputOptions& options);

// The same checks for one file.
void checkOutputFile(const std::filesystem::path& path, bool overwrite);

}  // namespace cli
