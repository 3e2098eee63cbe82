#include "tests/presets/preset_files.h"

namespace tests {
namespace {

std::string littleEndian(std::uint32_t number, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(number >> 8 * i & 0xFF);
  return text;
}

}  // namespace

std::string bitmap(int bits, std::int32_t width, std::int32_t height, const std::string& data,
                   std::uint32_t offset) {
  std::string file = "BM" + std::string(8, '\0') + littleEndian(offset, 4) + littleEndian(40, 4) +
                     littleEndian(static_cast<std::uint32_t>(width), 4) +
                     littleEndian(static_cast<std::uint32_t>(height), 4) + littleEndian(1, 2) +
                     littleEndian(static_cast<std::uint32_t>(bits), 2) + std::string(24, '\0');
  for (std::uint32_t entry = 0; bits == 8 && entry < 256; ++entry) {
    file += littleEndian(entry | (entry ^ 0x55) << 8 | (255 - entry) << 16, 4);
  }
  if (offset >= file.size() && offset < 4096) file.resize(offset, '\xEE');
  return file + data;
}

}  // namespace tests
