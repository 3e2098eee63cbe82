// Frames in the colors of screens.
#pragma once

#include <QImage>

#include "core/image_view.h"

namespace desk {

/// A frame of the effect, Argb8 or Argb16, as Format_ARGB32_Premultiplied; as Format_RGB32 where
/// all of it is opaque or `onBlack` is asked for.
QImage screenImage(const brisel::ImageView& frame, bool onBlack);

}  // namespace desk
