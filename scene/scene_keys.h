// The keys of scene files, for the readers' suggestions and for the schema that editors use.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace scene {

struct SceneKey {
  const char* name;
  const char* meaning;
};

inline constexpr SceneKey kTables[] = {
    {"scene", "What to render, and on what."},
    {"params", "Values of the effect's parameters, by their labels."},
    {"mask", "An outline that takes the place of the emitter's shape."},
    {"layer", "One of several layers of stars, drawn one over the other."}};

inline constexpr SceneKey kSceneKeys[] = {
    {"size", "Width and height in pixels; otherwise the input's, else 1280x720."},
    {"frames", "How many frames; otherwise the input's length, else 100."},
    {"preroll", "Steps before frame 0, so that a clip starts in full swing."},
    {"fps", "Frames per second, also as \"30000/1001\"; otherwise the input's, else 25."},
    {"depth", "Bits per channel."},
    {"quality", "Smooth or plain edges of rays."},
    {"input", "A still or a clip that stars go over, relative to the scene file."},
    {"mask", "A path of an SVG file, relative to the scene file: \"logo.svg#star\"."},
    {"presets", "Values to start from, applied in turn, as \"brisel presets\" lists them."}};

inline constexpr SceneKey kLayerKeys[] = {
    {"name", "What messages call the layer; otherwise its number."},
    {"presets", "Values to start from; they win over what the scene says for all layers."},
    {"mask", "The layer's own outline: a path of an SVG file, or a table as [mask]."},
    {"params", "Values of the layer's own; they win over all others."}};

inline constexpr SceneKey kMaskKeys[] = {
    {"path", "SVG path data in pixels of the frame, or keyframes of such."},
    {"inverted", "Whether the outline runs the other way."}};

inline constexpr SceneKey kKeyframeKeys[] = {
    {"frame", "The frame, counted from 0, or a time in seconds such as \"1.5s\"."},
    {"value", "The value at that time."},
    {"ease", "How the value goes on to the next keyframe."}};

inline std::vector<std::string> namesOf(std::span<const SceneKey> keys) {
  std::vector<std::string> names;
  for (const SceneKey& key : keys) names.emplace_back(key.name);
  return names;
}

}  // namespace scene
