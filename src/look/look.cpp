#include "look/look.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

#include "look/built_in_presets.h"
#include "scene/svg_path.h"
#include "scene/text/errors.h"

namespace brisel {
namespace {

std::vector<scene::PresetChoice> presetsNamed(std::string_view names) {
  constexpr std::string_view kSeparators = ", \t\n";
  constexpr std::string_view kNone = "none";  // for hosts whose texts cannot be empty
  std::vector<scene::PresetChoice> choices;
  for (;;) {
    names.remove_prefix(std::min(names.find_first_not_of(kSeparators), names.size()));
    if (names.empty()) return choices;
    const std::string_view name = names.substr(0, names.find_first_of(kSeparators));
    names.remove_prefix(name.size());
    if (name == kNone) continue;
    choices.push_back({std::string(name), "\"Presets\"", scene::Origin::Option});
  }
}

std::optional<scene::Mask> maskOf(const std::string& pathData) {
  if (pathData.empty()) return std::nullopt;
  try {
    return scene::Mask{.keys = {{{.time = 0}, scene::maskShapeFromPathData(pathData)}}};
  } catch (const scene::PathDataError& error) {
    throw scene::WorkError(std::string("\"Path\": ") + error.what());
  }
}

scene::Scene sceneOf(const LookSource& source) {
  scene::Scene scene;
  if (!source.scene.empty()) scene = scene::readScene(source.scene);
  const auto choices = presetsNamed(source.presets);
  const std::optional<scene::Mask> mask = maskOf(source.mask);
  for (scene::Layer& layer : scene.layers) {
    if (mask) layer.mask = mask;
    layer.presets.insert(layer.presets.end(), choices.begin(), choices.end());
  }
  return scene;
}

/// Of a layer's coordinate, 16.16 or not, that of a frame.
template <class Number>
Number reduced(Number coordinate, std::int32_t frame, std::int32_t full) {
  const double exact = static_cast<double>(coordinate) * frame / full;
  constexpr auto kLeast = static_cast<double>(std::numeric_limits<Number>::lowest());
  constexpr auto kMost = static_cast<double>(std::numeric_limits<Number>::max());
  return static_cast<Number>(std::clamp(exact, kLeast, kMost));
}

}  // namespace

Look::Look(const LookSource& source, FrameSize frame, FrameSize full)
    : frame_(frame), scene_(sceneOf(source)), full_(scene_.size.value_or(full)) {
  const scene::Surroundings around{
      full_, scene_.rate.value_or(source.rate.value_or(scene::FrameRate{})), source.hasClip};
  for (std::size_t i = 0; i < scene_.layers.size(); ++i) {
    layers_.emplace_back(scene_, i, around, builtInPresets());
  }
}

bool Look::isReduced() const {
  return full_.width != frame_.width || full_.height != frame_.height;
}

Values Look::valuesAt(std::size_t layer, std::int32_t frame) const {
  Values values = layers_[layer].at(frame);
  if (!isReduced()) return values;
  for (const ParamIndex point : {kStart, kEnd, kControlStart, kControlEnd}) {
    values[point].number = reduced(values[point].number, frame_.width, full_.width);
    values[point].y = reduced(values[point].y, frame_.height, full_.height);
  }
  return values;
}

std::optional<MaskOutline> Look::maskAt(std::size_t layer, std::int32_t frame) const {
  std::optional<MaskOutline> outline = layers_[layer].maskAt(frame);
  if (!outline || !isReduced()) return outline;
  for (MaskVertex& vertex : outline->vertices) {
    for (PointF* point : {&vertex.point, &vertex.in, &vertex.out}) {
      point->x = reduced(point->x, frame_.width, full_.width);
      point->y = reduced(point->y, frame_.height, full_.height);
    }
  }
  return buildMaskOutline(std::move(outline->vertices), outline->isOpen, false);
}

}  // namespace brisel
