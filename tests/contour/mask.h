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

}  // namespace reference
