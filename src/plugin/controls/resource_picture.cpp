#include "plugin/controls/resource_picture.h"

#include <algorithm>

#include "plugin/controls/resource_image.h"

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

void drawResource(Canvas& canvas, const ResourcePicture& picture, int x, int y, float opacity) {
  ResourceBitmap bitmap = LoadResourceBitmap(picture.identifier, picture.width, picture.height);
  if (bitmap.pixels == nullptr) return;
  turnUpright(bitmap, picture.height);
  const std::size_t bytes = bitmap.rowBytes * static_cast<std::size_t>(picture.height);
  canvas.drawPicture({{bitmap.pixels.get(), bytes}, picture.width, picture.height}, x, y, opacity);
}

}  // namespace brisel
