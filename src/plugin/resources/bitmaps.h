// The bitmaps of the effect's own controls, built into the module where the system has no
// resources.
#pragma once

#include <span>

namespace brisel {

/// A whole BMP file, of 24 bits and bottom row first; empty when there is no such bitmap.
std::span<const unsigned char> embeddedBitmap(int identifier);

}  // namespace brisel
