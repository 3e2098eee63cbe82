#include "contour/border_codes.h"

#include <cstring>
#include <utility>
#include <vector>

namespace brisel {
namespace {

/// A row of labels with the outside's at both ends, so that no corner needs a test.
using LabelRow = std::vector<std::uint8_t>;

void codeRow(const std::uint8_t* above, const std::uint8_t* below, std::int32_t cornerCount,
             std::uint8_t* codes) {
  for (std::int32_t k = 0; k < cornerCount; ++k) {
    const std::uint8_t nw = above[k], ne = above[k + 1], sw = below[k], se = below[k + 1];
    const std::uint8_t right = ne != se, down = sw != se, left = sw != nw, up = nw != ne;
    const auto edges = static_cast<std::uint8_t>(right + down + left + up);
    // Where the diagonal pixels of a checkerboard corner are alike, only two borders pass.
    const std::uint8_t crossing = edges == 4 && sw != ne && nw != se;
    const std::uint8_t junction = edges == 3 || crossing;
    codes[k] = static_cast<std::uint8_t>(right | down << 1 | left << 2 | up << 3 | junction << 4);
  }
}

}  // namespace

void codeBorders(const TCRaster<std::uint8_t>& mask, TCRaster<std::uint8_t>& codes) {
  std::int32_t height = 0, width = 0;
  mask.GetSize(&height, &width);
  LabelRow above(static_cast<std::size_t>(width) + 2, kOutsideLabel);
  LabelRow below = above;
  for (std::int32_t row = 0; row <= height; ++row) {
    if (row < height) {
      std::memcpy(&below[1], mask.Row(row), static_cast<std::size_t>(width));
    } else {
      below.assign(below.size(), kOutsideLabel);
    }
    codeRow(above.data(), below.data(), width + 1, codes.Row(row));
    std::swap(above, below);
  }
}

}  // namespace brisel
