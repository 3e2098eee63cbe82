// Pictures whose names differ in a number: f.1001.png, f.1002.png, ...
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace cli {

struct NumberedPictures {
  struct Picture {
    std::filesystem::path path;
    long long number = 0;
    bool isFile = true;  // and no folder, device or pipe, nor a link to one or to nothing
  };

  std::vector<Picture> pictures;  // ascending
  std::string pattern;            // their common name as "f.%04d.png"; empty without one
  bool isCutShort = false;        // greater numbers have that name too, and are not meant

  // Of one or more: without a number left out between the first and the last.
  bool isWhole() const;
  // The numbers left out: "1004, 1007-1010".
  std::string missing() const;
};

// Those that "f.%04d.png", "f.####.png" or, quoted in a shell, "f.*.png" stand for, which may be
// none; nothing when the name is no such pattern.
std::optional<NumberedPictures> picturesOfPattern(const std::filesystem::path& path);

// The picture and those that follow it; nothing when the name does not end in a number of three
// digits or more, set off by a sign, or the next number is not there.
std::optional<NumberedPictures> picturesFrom(const std::filesystem::path& first);

}  // namespace cli
