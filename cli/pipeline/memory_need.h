// What a render will take of the memory, before it takes any.
#pragma once

#include <cstdint>

#include "cli/pipeline/scene_renderer.h"

namespace cli {

// Bytes, rather too many than too few: the program, the layers and the frames on their way. What
// ffmpeg takes in processes of its own is not in it.
std::uint64_t memoryNeededBy(const ScenePlan& plan, int jobs);

// Throws WorkError saying what would need less when that, and `more` bytes besides, is above the
// plan's limit.
void checkMemory(const ScenePlan& plan, int jobs, std::uint64_t more = 0);

}  // namespace cli
