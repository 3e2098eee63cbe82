// The pictures that are built into the module.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "plugin/controls/canvas.h"

namespace brisel {

/// A drawn picture: blue, green, red, bottom row first, rows padded to a multiple of 4 bytes.
struct ResourceBitmap {
  std::unique_ptr<std::uint8_t[]> pixels;  // null when it could not be loaded
  std::size_t rowBytes = 0;
};

/// Loads the picture of that identifier and size, in pixels. Without pixels when a size is 0, there
/// is no such picture or no memory for it.
ResourceBitmap LoadResourceBitmap(int identifier, int width, int height);

struct ResourcePicture {
  int identifier;
  int width;  // pixels
  int height;
};

/// Loads the picture and draws it with its top left corner at x, y. Draws nothing when it cannot be
/// loaded. Opacity from 0 to 1.
void drawResource(Canvas& canvas, const ResourcePicture& picture, int x, int y, float opacity);

/// A texture of gray values, 0 .. 255 times its scale; element x + y * width, top row first.
struct GreyTexture {
  std::unique_ptr<float[]> values;
  int width = 0;
  int height = 0;
};

/// Fills `texture` with the red of a picture times `scale`. Leaves it empty when the picture cannot
/// be loaded.
void LoadGreyTexture(GreyTexture& texture, int identifier, int width, int height, float scale);

}  // namespace brisel
