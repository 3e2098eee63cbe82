// A two-dimensional grid of cells with a value of its own for everything outside, so that the area
// around an image is one more region of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace brisel {

/// Cells are addressed by row, 0 at the top, and column, 0 at the left. A raster with a dimension
/// below 1 is empty: every read yields the outside value. Running out of memory is std::bad_alloc
/// and leaves the raster empty.
template <class T>
class TCRaster {
 public:
  TCRaster(std::int32_t width, std::int32_t height, T outsideValue) : outsideValue_(outsideValue) {
    Resize(height, width);
  }
  TCRaster(const TCRaster&) = delete;
  TCRaster& operator=(const TCRaster&) = delete;

  T GetCell(std::int32_t row, std::int32_t column) const {
    return Contains(row, column) ? cells_[Index(row, column)] : outsideValue_;
  }

  /// Replaces the grid by one with undefined contents. Returns false, and leaves the raster empty,
  /// when a dimension is below 1.
  bool Resize(std::int32_t rowCount, std::int32_t columnCount) {
    return CreateWithStride(rowCount, columnCount, columnCount);
  }

  /// As Resize, with `stride` cells from one row's start to the next, at least the column count.
  bool CreateWithStride(std::int32_t rowCount, std::int32_t columnCount, std::int32_t stride) {
    cells_.reset();
    height_ = width_ = 0;
    if (rowCount >= 1 && columnCount >= 1) {
      if (stride < columnCount) return false;
      cells_ = std::make_unique_for_overwrite<T[]>(BlockSize(rowCount, stride));
    }
    height_ = rowCount;
    width_ = columnCount;
    stride_ = stride;
    return cells_ != nullptr;
  }

  /// CreateWithStride, then a copy of `rowCount * stride` cells from `source`.
  bool LoadFromMemory(std::int32_t rowCount, std::int32_t columnCount, std::int32_t stride,
                      const T* source) {
    if (!CreateWithStride(rowCount, columnCount, stride)) return false;
    std::memcpy(cells_.get(), source, BlockSize(rowCount, stride) * sizeof(T));
    return true;
  }

  /// Either output may be null.
  void GetSize(std::int32_t* height, std::int32_t* width) const {
    if (height != nullptr) *height = height_;
    if (width != nullptr) *width = width_;
  }

  /// The cells of a row inside the grid, for passes that run along it.
  T* Row(std::int32_t row) { return &cells_[Index(row, 0)]; }
  const T* Row(std::int32_t row) const { return &cells_[Index(row, 0)]; }

 private:
  static std::size_t BlockSize(std::int32_t rowCount, std::int32_t stride) {
    return static_cast<std::size_t>(rowCount) * static_cast<std::size_t>(stride);
  }

  bool Contains(std::int32_t row, std::int32_t column) const {
    return row >= 0 && row < height_ && column >= 0 && column < width_;
  }

  std::size_t Index(std::int32_t row, std::int32_t column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(stride_) +
           static_cast<std::size_t>(column);
  }

  std::unique_ptr<T[]> cells_;
  std::int32_t height_ = 0;
  std::int32_t width_ = 0;
  std::int32_t stride_ = 0;
  T outsideValue_;
};

}  // namespace brisel
