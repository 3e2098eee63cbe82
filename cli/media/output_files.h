// What may be written where, found out before any work is done.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/media/frame_range.h"
#include "cli/media/output_target.h"
#include "cli/pictures/frame.h"

namespace cli {

// The frames of the range that are to be written: all of them, or with skipExisting those whose
// files are not there or not complete. Throws UsageError when the range or the depth does not fit
// the kind of output, and WorkError when the folder is missing or not writable, or an output is
// there and neither overwrite nor skipExisting is asked for, or is no file.
std::vector<int> framesToWrite(const OutputTarget& target, FrameRange range, Depth depth,
                               const OutputOptions& options);

// Throws UsageError where one of the frames would replace a file that they are made from: `what`,
// such as "scene".
void checkThatItStays(const std::filesystem::path& read, const std::string& what,
                      const OutputTarget& target, const std::vector<int>& frames);

// That one file can be written: its folder is there, it is not, or may be replaced and is no
// folder, device or pipe. Throws WorkError.
void checkOutputFile(const std::filesystem::path& path, bool overwrite);

}  // namespace cli
