// A band of rows of a frame: how high it is, and all that becomes of it while it is in the cache of
// the processor that paints it.
#pragma once

#include <cstdint>
#include <functional>

#include "core/image_view.h"
#include "core/options.h"
#include "render/kernels.h"
#include "render/raster/grid.h"
#include "render/sprite_list.h"

namespace brisel {

/// Borrowed. Input and output share no byte, have the same format, and need not have the same size.
struct PaintTarget {
  MutableImageView output;
  ImageView input{};               // mixed in under the sprites
  MixMode mix = MixMode::Replace;  // how; Replace leaves the input out
  bool keepsOutput = false;        // sprites go on what the output holds, not on an empty frame
  /// Told of rows that have what they will have, or null.
  const std::function<void(std::int32_t begin, std::int32_t end)>* whenRowsAreDone = nullptr;
};

/// How far a frame is when a portion of its sprites is painted.
struct Portion {
  bool isFirst, isLast;
};

/// Rows of a band, a power of two: as many as about fill a second-level cache of today. A sprite
/// that lies in two bands costs two calls, so that smaller bands lose with small sprites what they
/// gain in the cache; but every thread is to have several.
std::int32_t rowsPerBand(const MutableImageView& image, int threads);

/// Empties the band with the first portion, paints its sprites in order, and mixes the input in
/// with the last, after which its rows are done. `grid` is scratch memory of the calling thread.
/// Throws std::bad_alloc, and what the target's function throws.
void paintBand(const PaintTarget& target, Portion portion, const SpriteList& sprites,
               std::int32_t band, const Kernels& kernels, PixelGrid& grid);

}  // namespace brisel
