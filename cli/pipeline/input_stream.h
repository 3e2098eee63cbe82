// The frames of the input as the host's worlds, decoded a few frames ahead by a thread of its own.
#pragma once

#include <string>
#include <thread>

#include "cli/media/frame_reader.h"
#include "cli/pipeline/bounded_queue.h"
#include "cli/pipeline/busy_time.h"
#include "cli/scene/scene_plan.h"
#include "hostkit/world.h"

namespace cli {

class InputStream {
 public:
  // The plan has an input.
  explicit InputStream(const ScenePlan& plan);
  ~InputStream();

  // The next frame, valid until the next call; after the end the last one again. Throws WorkError
  // naming the input once the frames before the damage are through, unless that is tolerated.
  hostkit::World& next();

  // What is wrong with the input although it delivered all frames that were asked for, else empty.
  // Reads no further than the render did.
  std::string damage();

  // Reading, converting and waiting for the decoder.
  const BusyTime& decoding() const { return decoding_; }

 private:
  void decode();

  FrameReader reader_;  // the thread's, until the queue of decoded frames ends
  hostkit::World current_;
  bool ended_ = false;
  const std::string name_;
  const int frames_;  // that the input should have
  const bool toleratesDamage_;
  int taken_ = 0;
  std::string failure_;  // that was tolerated
  BusyTime decoding_;
  BoundedQueue<hostkit::World> free_;
  BoundedQueue<hostkit::World> decoded_;
  std::jthread thread_;
};

}  // namespace cli
