// What stars take from the input: the maps of where they are born, and the pixel under a star.
#pragma once

#include <cstdint>

#include "core/color.h"
#include "core/geometry.h"
#include "core/image_view.h"
#include "core/render_settings.h"
#include "platform/page_array.h"

namespace brisel {

/// One float a pixel of the frame, row by row: the input's mean brightness on the scale of 255, 0
/// where it is transparent or does not reach. Null when there is no memory for it.
PageArray<float> buildSourceIntensityMap(const ImageView& input, FrameSize frame);

/// One byte a pixel of the frame, row by row: 255 where the input is not transparent, else 0. Null
/// when there is no memory for it.
PageArray<std::uint8_t> buildAlphaMask(const ImageView& input, FrameSize frame);

/// The pixel of the input that a star is born on.
struct SourcePixel {
  float alpha = 0.0f;  // 0..1
  Rgb color;           // 8-bit scale at either depth

  /// The largest color channel, 0..1.
  float brightest() const;
};

/// Reads the input under the point (`startX`, `startY`), given in fractions of the frame and moved
/// into the frame when outside. Transparent black where the input does not reach.
SourcePixel sourcePixelAt(const ImageView& input, const RenderSettings& settings, float startX,
                          float startY);

}  // namespace brisel
