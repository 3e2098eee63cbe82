// What the frames of a scene cost, measured, by which chunks are balanced.
#pragma once

#include <string>
#include <vector>

#include "cli/media/frame_range.h"
#include "cli/media/output_target.h"
#include "cli/pipeline/scene_renderer.h"
#include "cli/scene/scene_plan.h"

namespace cli {

// All times are in seconds of this machine.
struct FrameCosts {
  double startUp = 0;         // before the first step
  double preroll = 0;         // the steps before frame 0
  std::vector<double> steps;  // each frame's, when it is not drawn
  std::vector<double> draws;  // each frame's, when it is drawn and written
  int drawn = 0;              // frames that were drawn to find out
  int reached = 0;            // the last of them; later ones are taken to cost as much
};

// Steps through the scene and draws a few frames on the way, at most for a few seconds and a frame
// beyond. The last frame of the costs is that of the range. Throws as a render does.
FrameCosts measureFrames(const ScenePlan& plan, const OutputTarget& target, FrameRange range,
                         const RendererOptions& options);

// "0.2 s to start, 0.03 ms a step, 11 to 14 ms a frame (8 drawn, up to frame 93)".
std::string summaryOf(const FrameCosts& costs);

}  // namespace cli
