// Pictures of a scene at any frame, in any order, while the scene changes.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desk/render/clip_frames.h"
#include "desk/render/picture.h"
#include "effect/frame_views.h"
#include "effect/input_shapes.h"
#include "effect/star_history.h"
#include "render/painter.h"

namespace desk {

/// Thrown by what painting asks whether the picture is still wanted.
struct Abandoned {};

/// Keeps the stars of the last few states and the input's frames, so that going back and forth
/// between frames and states is quick. The bytes of frames are those of `brisel render`. Belongs to
/// one thread at a time.
class ScenePainter {
 public:
  /// `threads` paint a frame, the calling one among them.
  explicit ScenePainter(int threads);
  ~ScenePainter();

  /// The image that is asked for, its stars and its problem; where an input cannot be read, without
  /// it. `checkWanted` is called for every step and may throw. Throws that and std::bad_alloc.
  Picture paint(const FrameRequest& request, const std::function<void()>& checkWanted);

 private:
  struct Stars;

  Stars& starsOf(const FrameRequest& request);
  void drawLayers(Stars& stars, int frame, const std::function<void()>& checkWanted);
  void drawLayer(Stars& stars, std::size_t layer, int frame, const brisel::FrameViews& views,
                 const std::function<void()>& checkWanted);
  brisel::ImageView inputAt(Stars& stars, int frame);
  brisel::InputShapes* shapesOf(const cli::ScenePlan& plan);
  QImage overClip(Stars& stars, int frame, const QImage& image);

  brisel::Painter painter_;
  std::list<Stars> stars_;  // the ones used last first
  std::unique_ptr<ClipFrames> clip_;
  std::string clipKey_;  // what `clip_` is of
  brisel::InputShapes shapes_;
  std::string shapesKey_;  // what they are of
  std::vector<std::uint8_t> output_;
  std::vector<std::uint8_t> below_;
  std::vector<std::uint8_t> noInput_;
  std::string problem_;  // with the input of this picture
};

}  // namespace desk
