// A file read whole into memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace brisel {

struct FileBytes {
  std::unique_ptr<std::uint8_t[]> data;
  std::size_t size = 0;

  std::span<const std::uint8_t> bytes() const { return {data.get(), size}; }
};

/// Reads the ordinary file at `path`, which others may read meanwhile. Nothing when it cannot be
/// opened or read, is no ordinary file, or there is no memory for it.
std::optional<FileBytes> readWholeFile(const char* path);

}  // namespace brisel
