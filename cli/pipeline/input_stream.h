// The frames of the input, one after another.
#pragma once

#include <string>
#include <vector>

#include "cli/media/frame_reader.h"
#include "cli/pipeline/busy_time.h"
#include "cli/scene/scene_plan.h"

namespace cli {

class InputStream {
 public:
  // The plan has an input. A picture stays as it is until `inUse` more frames have been read.
  InputStream(const ScenePlan& plan, int firstFrame, int inUse);

  // The next frame, beginning with the first, not yet converted; after the end the last one again.
  // Throws WorkError naming the input once the frames before the damage are through, unless that is
  // tolerated.
  InputPicture& next();

  // Makes a next() in another thread fail soon.
  void stop() { reader_.stop(); }

  // What is wrong with the input although it delivered all frames that were asked for, else empty.
  // Reads no further than the render did.
  std::string damage();

 private:
  void take();

  FrameReader reader_;
  std::vector<InputPicture> pictures_;  // taken in turns
  std::size_t current_ = 0;
  bool ended_ = false;
  const std::string name_;
  const int frames_;  // that the input should have
  const bool toleratesDamage_;
  const int firstFrame_;
  int taken_;            // frames, those that the reader has sought past among them
  std::string failure_;  // that was tolerated
};

}  // namespace cli
