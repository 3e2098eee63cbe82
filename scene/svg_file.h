// Paths in SVG files.
#pragma once

#include <filesystem>
#include <string>

namespace scene {

struct SvgPath {
  std::string data;   // its attribute "d"
  std::string place;  // the file and the line it begins on, for messages: "logo.svg:12"
};

/// The <path> of that id. Throws WorkError naming the file when it cannot be read or is not XML,
/// when there is no such path, or when a transform moves it: what counts are the numbers in "d".
SvgPath readSvgPath(const std::filesystem::path& file, const std::string& id);

}  // namespace scene
