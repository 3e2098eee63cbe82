// Masks of the kinds that a layer's alpha channel comes in, kind and unkind, for tests and
// measurements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace reference {

/// One byte per pixel, rows from the top without gaps.
struct Mask {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> cells;

  std::uint8_t& at(int row, int column) { return cells[index(row, column)]; }
  std::uint8_t at(int row, int column) const { return cells[index(row, column)]; }

 private:
  std::size_t index(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(column);
  }
};

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
Mask relabeled(Mask mask, std::uint32_t seed);

}  // namespace reference
