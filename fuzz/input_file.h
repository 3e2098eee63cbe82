// An input as a file, for readers that take a path.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

#include "tests/support/temporary_folder.h"

namespace fuzz {

/// In a folder of its own, in which later inputs take the place of earlier ones.
class InputFolder {
 public:
  std::filesystem::path write(const std::string& name, std::span<const std::uint8_t> content) {
    std::filesystem::path file = folder_.path() / name;
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(content.data()),
                 static_cast<std::streamsize>(content.size()));
    return file;
  }

 private:
  tests::TemporaryFolder folder_;
};

}  // namespace fuzz
