// What the tests of preset files share: a folder of their own, small bitmaps, and damage done to
// files.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/dice.h"
#include "tests/support/temporary_folder.h"

namespace tests {

class FolderTest : public ::testing::Test {
 protected:
  std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
  std::string folder() const { return path(""); }  // with its trailing separator
  void write(const std::string& name, const std::string& bytes) const;

 private:
  TemporaryFolder folder_;
};

/// A bitmap whose header says what it is told; the pixel data at `offset` is `data`.
std::string bitmap(int bits, std::int32_t width, std::int32_t height, const std::string& data,
                   std::uint32_t offset);

/// `bytes` with a few bytes changed, cut out, doubled or cut off.
std::string damaged(std::string bytes, Dice& dice);

}  // namespace tests
