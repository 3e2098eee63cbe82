// What a render took, and which of the stages that overlap it waited for.
#pragma once

#include <cstdio>

#include "cli/pipeline/render_pipeline.h"

namespace cli {

// Prints a table of the stages that took time, with their shares of the whole, and names the one
// that held the others up. A clip is encoded by another program, which writing then waits for.
void printRenderStats(std::FILE* stream, const StageTimes& times, int jobs, bool isClip, int frames,
                      double seconds);

}  // namespace cli
