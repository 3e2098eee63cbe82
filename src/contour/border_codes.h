// Border codes: which edges between differently labeled pixels leave each pixel corner.
#pragma once

#include <cstdint>

#include "contour/raster.h"

namespace brisel {

/// What every read outside the mask yields; as the label to trace it means any label.
inline constexpr std::uint8_t kOutsideLabel = 121;

/// The edges that leave a corner, and the mark of a corner where three or more regions meet.
inline constexpr unsigned kEdgeRight = 1;
inline constexpr unsigned kEdgeDown = 2;
inline constexpr unsigned kEdgeLeft = 4;
inline constexpr unsigned kEdgeUp = 8;
inline constexpr unsigned kJunction = 16;

/// In the order in which edges are tried.
inline constexpr unsigned kDirections[] = {kEdgeRight, kEdgeDown, kEdgeLeft, kEdgeUp};

/// A pixel corner: the top-left one of the pixel at the same row and column.
struct Corner {
  std::int32_t row;
  std::int32_t column;
  bool operator==(const Corner&) const = default;
};

constexpr unsigned oppositeDirection(unsigned direction) {
  return direction <= kEdgeDown ? direction << 2 : direction >> 2;
}

/// The corner one pixel along `direction`.
constexpr Corner nextCorner(Corner from, unsigned direction) {
  switch (direction) {
    case kEdgeRight:
      return {from.row, from.column + 1};
    case kEdgeDown:
      return {from.row + 1, from.column};
    case kEdgeLeft:
      return {from.row, from.column - 1};
    default:
      return {from.row - 1, from.column};
  }
}

/// The mask's value on the right-hand side when traveling from `from` along `direction`.
inline std::uint8_t rightLabel(const TCRaster<std::uint8_t>& mask, Corner from,
                               unsigned direction) {
  const bool above = direction == kEdgeLeft || direction == kEdgeUp;
  const bool left = direction == kEdgeDown || direction == kEdgeLeft;
  return mask.GetCell(from.row - above, from.column - left);
}

/// The mask's value on the left-hand side: it lies right of the direction a quarter turn before.
inline std::uint8_t leftLabel(const TCRaster<std::uint8_t>& mask, Corner from, unsigned direction) {
  return rightLabel(mask, from, direction == kEdgeRight ? kEdgeUp : direction >> 1);
}

/// Fills `codes`, one row and one column larger than `mask`, with the code of every corner.
void codeBorders(const TCRaster<std::uint8_t>& mask, TCRaster<std::uint8_t>& codes);

}  // namespace brisel
