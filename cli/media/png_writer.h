// PNG files, their compression through libdeflate.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "cli/pictures/frame.h"

namespace cli {

// The frame with its alpha at its depth, as the bytes of a file.
void encodePng(const Frame& frame, std::vector<std::uint8_t>& bytes);

// The file appears under its name only when complete; throws WorkError naming it when it cannot be
// written.
void writePng(const Frame& frame, const std::filesystem::path& path);

// Whether the file begins and ends as a PNG file does.
bool isCompletePng(const std::filesystem::path& path);

}  // namespace cli
