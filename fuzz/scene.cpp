// Scenes: the text, its keyframes, masks and presets, and what they give at some frames. After a
// zero byte comes the file "logo.svg" that the scene may name.
#include "scene/scene.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "effect/settings.h"
#include "input_file.h"
#include "scene/layer_values.h"
#include "scene/text/errors.h"
#include "target.h"

namespace {

std::optional<std::vector<std::uint8_t>> readPreset(const std::filesystem::path& file) {
  const auto bytes = [](std::string_view text) {
    return std::vector<std::uint8_t>(text.begin(), text.end());
  };
  if (file == "Drizzen.prs")
    return bytes(";\r\n[Emmiter]\r\nsnow.txt s.bmp\r\n[Geometry]\r\ndot.txt d.bmp\r\n");
  if (file == "snow.txt")
    return bytes("Tessaro parameters\r\nStart\r\n0.2 0.3\r\nMix with original\r\n1\r\n");
  if (file == "dot.txt") return bytes("Tessaro parameters\r\nSize\r\n7\r\nColor\r\n1 2 3 4\r\n");
  return std::nullopt;
}

void takeLayer(const scene::LayerValues& layer, brisel::FrameSize size) {
  for (const double frame : {-1.0, 0.0, 0.4, 7.0, 12.5, 100.0, 1e6}) {
    const brisel::Values values = layer.at(frame);
    static_cast<void>(layer.isToBeAdded(values));
    static_cast<void>(brisel::settingsOf(values, {.size = size}));
    const auto outline = layer.maskAt(frame);
    fuzz::require(outline.has_value() == (values[brisel::kPath].number == 1), "a mask has a path");
    if (!outline) continue;
    fuzz::require(outline->vertexCount() > 0, "an outline has vertices");
    for (const float t : {0.0f, 0.3f, 1.0f}) {
      const brisel::EmitterPoint place = brisel::evaluateMaskOutline(*outline, t);
      fuzz::require(std::isfinite(place.x) && std::isfinite(place.y), "an outline is somewhere");
    }
  }
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  static InputFolder folder;
  static const scene::PresetLibrary presets("", readPreset);
  const auto end =
      static_cast<std::size_t>(std::find(input.begin(), input.end(), 0) - input.begin());
  folder.write("logo.svg", input.subspan(std::min(end + 1, input.size())));
  const std::filesystem::path file = folder.write("scene.toml", input.first(end));
  try {
    const scene::Scene read = scene::readScene(file);
    require(!read.layers.empty() && read.layers.size() <= scene::kMaxLayers, "1 to 64 layers");
    const brisel::FrameSize size = read.size.value_or(brisel::FrameSize{1280, 720});
    for (std::size_t i = 0; i < read.layers.size(); ++i) {
      static_cast<void>(scene::layerPrefix(read, i));
      takeLayer(
          {read, i, {size, read.rate.value_or(scene::FrameRate{}), !read.input.empty()}, presets},
          size);
    }
  } catch (const scene::WorkError& error) {
    require(std::string_view(error.what()).starts_with(file.native()),
            "a complaint begins with the place");
  }
}
