// SVG path data as the shape of a mask.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string_view>

#include "scene/mask.h"

namespace scene {

inline constexpr std::size_t kMaxMaskVertices = 100'000;
inline constexpr double kMaxMaskCoordinate = 1'000'000;  // pixels, either way from 0

/// What is wrong with path data, with the character (from 1) where it is.
struct PathDataError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// One outline of the commands M, L, H, V, C, S, Q, T and Z, absolute or relative; open unless it
/// ends with Z. Quadratic curves become cubic ones. A closed outline that has come back to its
/// first vertex does not repeat it. Throws PathDataError; arcs and further subpaths are errors.
MaskShape maskShapeFromPathData(std::string_view data);

}  // namespace scene
