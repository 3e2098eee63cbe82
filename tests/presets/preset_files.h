// Small bitmaps for tests of preset files.
#pragma once

#include <cstdint>
#include <string>

namespace tests {

/// A bitmap whose header says what it is told; the pixel data at `offset` is `data`.
std::string bitmap(int bits, std::int32_t width, std::int32_t height, const std::string& data,
                   std::uint32_t offset);

}  // namespace tests
