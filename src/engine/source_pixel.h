// The pixel of the input layer that a star is born on.
#pragma once

#include "core/image_view.h"
#include "core/render_settings.h"

namespace brisel {

struct SourcePixel {
  float alpha = 0.0f;  // 0..1
  Rgb color;           // 8-bit scale at either depth

  /// The largest colour channel, 0..1.
  float brightest() const;
};

/// Reads the input under the point (`startX`, `startY`), given in fractions of the frame and moved
/// into the frame when outside. Transparent black where the input does not reach.
SourcePixel sourcePixelAt(const ImageView& input, const RenderSettings& settings, float startX,
                          float startY);

}  // namespace brisel
