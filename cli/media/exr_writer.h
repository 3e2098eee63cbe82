// OpenEXR files: half floats in linear light.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "cli/pictures/frame.h"

namespace cli {

// The frame as the bytes of a file with the channels R, G, B and A in half floats. Colors become
// linear light by undoing the sRGB curve, with BT.709's primaries, and are multiplied by alpha, as
// is customary in these files.
void encodeExr(const Frame& frame, std::vector<std::uint8_t>& bytes);

// Whether the file holds all of a picture.
bool isCompleteExr(const std::filesystem::path& path);

}  // namespace cli
