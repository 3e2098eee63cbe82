// What surrounds one frame: its images, and how it is to be painted.
#pragma once

#include <cstdint>
#include <functional>

#include "core/image_view.h"

namespace brisel {

class InputShapes;
class Painter;

/// Borrowed for the call that it is given to. A `painter` (render/painter.h) may be shared by
/// frames and instances that are rendered one after the other, and brings threads and instruction
/// set; the bytes are the same with any. Stars are mixed with the input, or with
/// the `backdrop` where there is one; what reads the input for more than that reads it either way.
struct FrameViews {
  MutableImageView output{};    // Argb8 or Argb16; color is not multiplied by alpha
  ImageView input{};            // of the output's format and of any size; may be empty
  std::int32_t layerWidth = 0;  // of the layer at full resolution, pixels; 0: the output's
  bool highQuality = true;      // smooth edges of rays
  Painter* painter = nullptr;   // null: on the calling thread, with the widest instruction set
  ImageView backdrop{};         // of the output's format; mixed in under the stars, not the input
  InputShapes* inputShapes = nullptr;  // of an input that stays the same; null: found for the frame

  /// Told of rows of the output, from `begin` to before `end`, when they have what they will have,
  /// by the thread that painted them, in whose cache they are then. Each row once; may throw.
  const std::function<void(std::int32_t begin, std::int32_t end)>* whenRowsAreDone = nullptr;
};

}  // namespace brisel
