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

std::string damaged(std::string bytes, Dice& dice) {
  for (int times = dice.integer(1, 5); times > 0 && !bytes.empty(); --times) {
    const auto size = static_cast<std::int32_t>(bytes.size());
    const auto at = static_cast<std::size_t>(dice.integer(0, size - 1));
    const auto length = static_cast<std::size_t>(dice.integer(1, 20));
    switch (dice.integer(0, 4)) {
      case 0:
        bytes[at] = static_cast<char>(dice.integer(0, 255));
        break;
      case 1:
        bytes[at] = dice.oneOf({'\r', '\n', '[', ']', ';', ' ', '\t', '-', 'e', '9', '\0', '\xFF'});
        break;
      case 2:
        bytes.erase(at, length);
        break;
      case 3:
        bytes.insert(at, bytes.substr(at, length * 20));
        break;
      default:
        if (dice.integer(0, 3) == 0) bytes.resize(at);
    }
  }
  return bytes;
}

}  // namespace tests
