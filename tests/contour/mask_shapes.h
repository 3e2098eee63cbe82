// Masks of the kinds that a layer's alpha channel comes in, kind and unkind, for tests and
// measurements.
#pragma once

#include <cstdint>

#include "tests/contour/mask.h"

namespace reference {

Mask empty(int width, int height);
Mask disc(int width, int height);

/// A line of letter-like strokes: bowls, stems and slants.
Mask title(int width, int height);

/// Every pixel opaque with probability `density`.
Mask noise(int width, int height, double density, std::uint32_t seed);

Mask checkerboard(int width, int height);

/// One wall that winds to the middle of the frame, with deep notches in its side: a single outline,
/// much of it as far from a chord as the rest.
Mask notchedSpiral(int width, int height);

/// Some of the above, blobs, boxes or rings, blown up, speckled or left alone, of up to `maxSide`
/// pixels.
Mask anyShape(int maxSide, std::uint32_t seed);

/// `mask` with its opaque pixels given several values, the outside's among them.
Mask relabelled(Mask mask, std::uint32_t seed);

}  // namespace reference
