// The inner loops of painting, once per instruction set. All of them give the same bytes.
#pragma once

#include <cstdint>
#include <span>

#include "core/image_view.h"
#include "core/options.h"
#include "render/raster/blend_rule.h"
#include "render/raster/grid.h"
#include "render/sprites/specs.h"

namespace brisel {

struct RayShape;

/// The most pixels that any instruction set takes at a time.
inline constexpr int kMostLanes = 16;

/// Functions that read what they are given and write pixels of the image, and nothing else; they
/// allocate nothing. A sprite's grid is where its own rows and columns fall on the image, and
/// `rows`, all of them the image's, are those to paint: the bytes do not depend on how an image is
/// divided into them.
struct Kernels {
  const char* name;  // of the instruction set
  int lanes;         // pixels at a time
  void (*glow)(const MutableImageView& image, const PixelGrid& grid, const GlowSpec& glow);
  void (*blics)(const MutableImageView& image, const PixelGrid& grid, const BlicsSpec& blics);
  void (*cross)(const MutableImageView& image, const PixelGrid& grid, const CrossSpec& cross);
  /// `built` holds the shapes of all rays; they are built as they are painted when it is null.
  void (*rays)(const MutableImageView& image, IndexRange rows, const RaySpec& rays,
               const RayShape* built);
  void (*run)(const MutableImageView& image, const RunSpec& run);
  /// The last step of a frame: mixes the input under the stars by `mode` (Normal or Add; anything
  /// else does nothing). Both images have the same format. The input counts as transparent black
  /// outside its own bounds.
  void (*mixWithInput)(const MutableImageView& stars, IndexRange rows, const ImageView& input,
                       MixMode mode);
};

/// Those that this processor can run, narrowest first; the first is the plain one.
std::span<const Kernels* const> availableKernels();

/// The kernels called `name`; the widest available ones when it is null or unknown.
const Kernels& kernelsNamed(const char* name);

/// Each defined in a file of its own, which is compiled for its instruction set. Call only
/// those that are available.
extern const Kernels kPlainKernels;
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;
extern const Kernels kNeonKernels;

}  // namespace brisel
