// The order of a pixel's channels: hosts have red, green, blue, alpha, and the effect has alpha
// first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace brisel {

/// `from` and `to` are `count` pixels of four bytes, and may be the same.
void rgbaToArgb(const std::uint32_t* from, std::uint32_t* to, std::size_t count);
void argbToRgba(const std::uint32_t* from, std::uint32_t* to, std::size_t count);

}  // namespace brisel
