// What the renderer is asked for, and what it answers.
#pragma once

#include <QImage>
#include <QMetaType>
#include <QString>
#include <cstdint>

#include "desk/document/scene_state.h"

namespace desk {

enum class Backdrop {
  Transparent,  // alpha is kept, for whatever the view puts below
  Black,
  Clip  // the input's own frame below the stars, where there is one; else as Transparent
};

struct FrameRequest {
  SharedState state;  // not null
  int frame = 0;
  int reduction = 1;  // 1, 2, 3 or 4: the sides are that part of the full ones, rounded up
  Backdrop backdrop = Backdrop::Transparent;
};

struct Picture {
  QImage image;  // Format_ARGB32_Premultiplied, or Format_RGB32 where nothing is transparent; null
                 // where the frame could not be made
  SharedState state;
  int frame = 0;
  int reduction = 1;
  int stars = 0;              // living, of all layers
  double milliseconds = 0;    // that it took, from the renderer's taking the request on
  QString problem;            // one sentence: why there is no image or no input in it; or empty
  std::uint64_t request = 0;  // its number: what FrameRenderer::request() returned
};

}  // namespace desk

Q_DECLARE_METATYPE(desk::Picture)
