// The frames of a still or clip in whatever order they are asked for.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "cli/media/frame_reader.h"
#include "cli/scene/scene_plan.h"

namespace desk {

/// Those of `brisel render`, byte for byte. The frames around those asked for last are kept, in so
/// many bytes, and at least the last one. Belongs to one thread.
class ClipFrames {
 public:
  /// Of the plan's input, which it has, in the size and depth of its frames.
  explicit ClipFrames(const cli::ScenePlan& plan);

  /// The frame, from 0; after the end the last one. Valid until the next call. Throws
  /// scene::WorkError naming the input when it cannot be decoded.
  const hostkit::World& at(int frame);

 private:
  const hostkit::World* read(int frame);
  void makeRoom(int frame);

  cli::MediaInfo info_;
  cli::FrameSize size_;
  scene::FrameRate rate_;
  cli::Depth depth_;
  std::size_t most_;  // frames that are kept
  int last_;          // frame that the clip should have
  std::optional<cli::FrameReader> reader_;
  int next_ = 0;  // that the reader delivers
  std::map<int, cli::InputPicture> kept_;
};

}  // namespace desk
