// PNG files through libpng.
#pragma once

#include <filesystem>

#include "frame.h"

namespace cli {

// Writes the frame with its alpha at its depth. The file appears under its name only when complete;
// throws WorkError naming it when it cannot be written.
void writePng(const Frame& frame, const std::filesystem::path& path);

}  // namespace cli
