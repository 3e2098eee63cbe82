// A built-in picture, drawn.
#pragma once

#include "plugin/controls/canvas.h"

namespace brisel {

struct ResourcePicture {
  int identifier;
  int width;  // pixels
  int height;
};

/// Loads the picture and draws it with its top left corner at x, y. Draws nothing when it cannot be
/// loaded. Opacity from 0 to 1.
void drawResource(Canvas& canvas, const ResourcePicture& picture, int x, int y, float opacity);

}  // namespace brisel
