// The per-frame rasters that emitters take from the input layer.
#pragma once

#include <cstdint>

#include "core/image_view.h"
#include "platform/page_array.h"

namespace brisel {

/// One float a pixel of the frame, row by row: the input's mean brightness on the scale of 255, 0
/// where it is transparent or does not reach. Null when the memory cannot be had.
PageArray<float> buildSourceIntensityMap(const ImageView& input, std::int32_t frameWidth,
                                         std::int32_t frameHeight);

/// One byte a pixel of the frame, row by row: 255 where the input is not transparent, else 0. Null
/// when the memory cannot be had.
PageArray<std::uint8_t> buildAlphaMask(const ImageView& input, std::int32_t frameWidth,
                                       std::int32_t frameHeight);

}  // namespace brisel
