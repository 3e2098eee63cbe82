// PNG files through libpng.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "cli/pictures/frame.h"

namespace cli {

// The frame with its alpha at its depth, as the bytes of a file.
void encodePng(const Frame& frame, std::vector<std::uint8_t>& bytes);

// The file appears under its name only when complete; throws WorkError naming it when it cannot be
// written.
void writePngFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path);

// Both.
void writePng(const Frame& frame, const std::filesystem::path& path);

}  // namespace cli
