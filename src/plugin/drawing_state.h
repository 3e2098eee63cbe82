// What renders draw with and leave to later ones, besides an instance's stars.
#pragma once

#include <optional>

#include "core/geometry.h"
#include "core/random.h"
#include "render/painter.h"
#include "render/stars/compose.h"

namespace brisel {

struct DrawingState {
  SpriteState sprites;
  FrameSize frameSize;  // of the last render; a preset's points are fractions of it
  Painter painter;      // on the rendering thread, with the widest instruction set
};

/// Of an instance that shares nothing.
struct OwnDrawing {
  RandomGenerator random;
  DrawingState state;
};

/// What one frame draws with: the instance's own drawing state, or the module's.
///
/// Instances that share the module's are meant to be rendered one at a time. When a host renders
/// two at once after all, the first has the module's, and the other a fresh one that ends with its
/// frame: it paints its stars, waits for nobody, and neither reads nor writes what the first does.
class DrawingLease {
 public:
  /// `own` is null for an instance that shares the module's.
  explicit DrawingLease(OwnDrawing* own);
  ~DrawingLease();
  DrawingLease(const DrawingLease&) = delete;
  DrawingLease& operator=(const DrawingLease&) = delete;

  RandomGenerator& random() const { return random_; }
  DrawingState& state() const { return *state_; }
  bool isPassing() const { return passing_.has_value(); }  // ends with the frame

 private:
  RandomGenerator& random_;
  DrawingState* state_;
  bool holdsModules_ = false;
  std::optional<DrawingState> passing_;
};

}  // namespace brisel
