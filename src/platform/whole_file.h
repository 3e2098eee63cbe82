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

/// Far more than any file of presets has. A larger one is taken for no file of theirs.
inline constexpr std::int64_t kMostFileBytes = std::int64_t{16} << 20;

/// Reads the ordinary file at `path`, which others may read meanwhile. Nothing when it cannot be
/// opened or read, is no ordinary file, has more than kMostFileBytes, or there is no memory for it.
std::optional<FileBytes> readWholeFile(const char* path);

}  // namespace brisel
