// A folder of a test's own, and files in it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/temporary_folder.h"

namespace tests {

class FolderTest : public ::testing::Test {
 protected:
  std::filesystem::path path(const std::string& name) const { return folder_.path() / name; }
  std::string folder() const { return path("").string(); }  // with its trailing separator
  void write(const std::string& name, const std::string& bytes) const {
    std::filesystem::remove(path(name));  // some file systems are slow to truncate
    std::ofstream(path(name), std::ios::binary) << bytes;
  }
  std::string read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(path(name), std::ios::binary).rdbuf();
    return bytes.str();
  }

 private:
  TemporaryFolder folder_;
};

}  // namespace tests
