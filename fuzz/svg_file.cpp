// SVG files, and the path that a scene takes from them.
#include "scene/svg_file.h"

#include <string_view>

#include "input_file.h"
#include "scene/text/errors.h"
#include "target.h"

void fuzz::runInput(std::span<const std::uint8_t> input) {
  static InputFolder folder;
  const std::filesystem::path file = folder.write("logo.svg", input);
  try {
    const scene::SvgPath path = scene::readSvgPath(file, "star");
    require(path.place.starts_with(file.native() + ":"), "a path has a place");
  } catch (const scene::WorkError& error) {
    require(std::string_view(error.what()).find(file.native()) != std::string_view::npos,
            "a complaint names the file");
  }
}
