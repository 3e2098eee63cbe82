// What the tests of preset files share: a folder of their own, small bitmaps, and damage done to
// files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/dice.h"

namespace tests {

class FolderTest : public ::testing::Test {
 protected:
  FolderTest();
  ~FolderTest() override;

  std::string path(const std::string& name) const { return folder_ + name; }
  const std::string& folder() const { return folder_; }  // with its trailing separator
  void write(const std::string& name, const std::string& bytes) const;

 private:
  std::string folder_;
};

std::string littleEndian(std::uint32_t number, int bytes);

/// A bitmap whose header says what it is told; the pixel data at `offset` is `data`.
std::string bitmap(int bits, std::int32_t width, std::int32_t height, const std::string& data,
                   std::uint32_t offset);

/// `bytes` with a few bytes changed, cut out, doubled or cut off.
std::string damaged(std::string bytes, Dice& dice);

}  // namespace tests
