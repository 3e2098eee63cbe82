// A folder of a test's own, deleted with all that is in it.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace tests {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    for (std::random_device random; path_.empty();) {
      const auto folder =
          std::filesystem::temp_directory_path() / ("brisel-test-" + std::to_string(random()));
      if (std::filesystem::create_directory(folder)) path_ = folder;
    }
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace tests
