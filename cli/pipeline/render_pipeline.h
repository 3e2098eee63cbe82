// Renders the frames of a scene into a writer. Reading, converting, painting, encoding and writing
// overlap: each frame on its way is at a stage of its own.
#pragma once

#include <vector>

#include "cli/media/frame_writer.h"
#include "cli/pipeline/busy_time.h"
#include "cli/pipeline/progress.h"
#include "cli/pipeline/scene_renderer.h"

namespace cli {

// What the stages took, added up over the threads.
struct StageTimes {
  BusyTime reading;  // waiting for the decoder included
  BusyTime converting;
  BusyTime stepping;
  BusyTime painting;
  BusyTime encoding;
  BusyTime writing;  // waiting for the encoder included
};

// Renders all frames up to the last of those wanted, which ascend and are at least one, writes
// these and finishes the output. Works on as many threads as the renderer has jobs, the caller's
// among them, and those that paint. Throws what went wrong with reading or rendering a frame when
// those before it are written, and what went wrong with writing at once.
void renderFrames(SceneRenderer& renderer, FrameWriter& writer, const std::vector<int>& wanted,
                  Progress& progress, StageTimes& times);

}  // namespace cli
