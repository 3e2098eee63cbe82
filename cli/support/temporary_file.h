// A file under another name in its final folder until it is complete.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace cli {

class TemporaryFile {
 public:
  // Creates an empty file next to the final path. Throws WorkError naming the final path when the
  // folder does not allow it.
  explicit TemporaryFile(std::filesystem::path finalPath);

  // Removes the file unless it was committed.
  ~TemporaryFile();

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Gives the file its final name, replacing what was there.
  void commit();

 private:
  std::filesystem::path finalPath_;
  std::filesystem::path path_;
};

// The file appears under its name only when complete; throws WorkError naming it when it cannot be
// written.
void writeWholeFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes);

}  // namespace cli
