// What the tests of preset files share: small bitmaps, and damage done to files.
#pragma once

#include <cstdint>
#include <string>

#include "tests/support/dice.h"

namespace tests {

/// A bitmap whose header says what it is told; the pixel data at `offset` is `data`.
std::string bitmap(int bits, std::int32_t width, std::int32_t height, const std::string& data,
                   std::uint32_t offset);

/// `bytes` with a few bytes changed, cut out, doubled or cut off.
std::string damaged(std::string bytes, Dice& dice);

}  // namespace tests
