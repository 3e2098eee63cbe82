#include "plugin/controls/resource_image.h"

#include <algorithm>
#include <new>

#include "plugin/resources/bitmap_resource.h"

namespace brisel {
namespace {

// The host takes the top row first.
void turnUpright(ResourceBitmap& bitmap, int height) {
  std::uint8_t* first = bitmap.pixels.get();
  std::uint8_t* last = first + static_cast<std::size_t>(height - 1) * bitmap.rowBytes;
  for (; first < last; first += bitmap.rowBytes, last -= bitmap.rowBytes) {
    std::swap_ranges(first, first + bitmap.rowBytes, last);
  }
}

}  // namespace

ResourceBitmap LoadResourceBitmap(int identifier, int width, int height) {
  if (width <= 0 || height <= 0) return {};
  ResourceBitmap bitmap;
  bitmap.rowBytes = bitmapRowBytes(width);
  const std::size_t bytes = bitmap.rowBytes * static_cast<std::size_t>(height);
  bitmap.pixels.reset(new (std::nothrow) std::uint8_t[bytes]);
  if (bitmap.pixels == nullptr ||
      !readBitmapResource(identifier, width, height, bitmap.pixels.get())) {
    return {};
  }
  return bitmap;
}

void drawResource(Canvas& canvas, const ResourcePicture& picture, int x, int y, float opacity) {
  ResourceBitmap bitmap = LoadResourceBitmap(picture.identifier, picture.width, picture.height);
  if (bitmap.pixels == nullptr) return;
  turnUpright(bitmap, picture.height);
  const std::size_t bytes = bitmap.rowBytes * static_cast<std::size_t>(picture.height);
  canvas.drawPicture({{bitmap.pixels.get(), bytes}, picture.width, picture.height}, x, y, opacity);
}

void LoadGreyTexture(GreyTexture& texture, int identifier, int width, int height, float scale) {
  texture = {};
  const ResourceBitmap bitmap = LoadResourceBitmap(identifier, width, height);
  if (bitmap.pixels == nullptr) return;
  const auto columns = static_cast<std::size_t>(width);
  const auto rows = static_cast<std::size_t>(height);
  texture.values.reset(new (std::nothrow) float[columns * rows]);
  if (texture.values == nullptr) return;
  for (std::size_t y = 0; y < rows; ++y) {
    const std::uint8_t* row = bitmap.pixels.get() + (rows - 1 - y) * bitmap.rowBytes;
    for (std::size_t x = 0; x < columns; ++x) {
      texture.values[x + y * columns] = static_cast<float>(row[3 * x + 2]) * scale;
    }
  }
  texture.width = width;
  texture.height = height;
}

}  // namespace brisel
