#include "scene/scene.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "scene/mask_reader.h"
#include "scene/scene_keys.h"
#include "scene/text/errors.h"
#include "scene/text/numbers.h"
#include "scene/toml_reader.h"

namespace scene {
namespace {

std::size_t keyframesOf(const Layer& layer) {
  std::size_t count = 0;
  for (const Setting& setting : layer.settings) count += setting.keys.size();
  return count;
}

std::size_t verticesOf(const Layer& layer) {
  if (!layer.mask) return 0;
  std::size_t count = 0;
  for (const Mask::Key& key : layer.mask->keys) count += key.value.vertices.size();
  return count;
}

class SceneReader {
 public:
  SceneReader(TomlReader toml, const FileAccess& access) : toml_(std::move(toml)), access_(access) {
    scene_.file = toml_.file();
  }

  Scene read() {
    const toml::table root = toml_.parse();
    for (const TomlEntry& entry : inFileOrder(root)) {
      if (entry.key == "scene") {
        readSceneTable(toml_.tableOf(entry));
      } else if (entry.key == "params") {
        takeParams(forAll_, entry, Origin::Scene);
      } else if (entry.key == "mask") {
        takeMask(entry, readMaskTable(toml_, entry));
      } else if (entry.key == "layer") {
        readLayers(entry);
      } else {
        rejectKey(entry, "table", kTables, "");
      }
    }
    takeLayers();
    return std::move(scene_);
  }

 private:
  void readSceneTable(const toml::table& table) {
    for (const TomlEntry& entry : inFileOrder(table)) {
      if (entry.key == "size") {
        scene_.size = sizeOf(entry);
      } else if (entry.key == "frames") {
        scene_.frames = toml_.integerOf(entry, 1, kMaxFrames);
      } else if (entry.key == "preroll") {
        scene_.preroll = toml_.integerOf(entry, 0, kMaxFrames);
      } else if (entry.key == "fps") {
        scene_.rate = rateOf(entry);
      } else if (entry.key == "depth") {
        scene_.depth = depthOf(entry);
      } else if (entry.key == "quality") {
        scene_.highQuality = toml_.textOf(entry, {"high", "low"}) == "high";
      } else if (entry.key == "input") {
        scene_.input = fileNamedBy(scene_.file, toml_.textOf(entry));
        scene_.inputPlace = toml_.placeOf(*entry.node);
      } else if (entry.key == "presets") {
        takePresets(forAll_, entry, Origin::Scene);
      } else if (entry.key == "mask") {
        takeMask(entry, readMaskReference(toml_, entry, access_));
      } else {
        toml_.unknownKey(entry, "key", namesOf(kSceneKeys));
      }
    }
  }

  void readLayers(const TomlEntry& entry) {
    const toml::array* array = entry.node->as_array();
    if (!array || array->empty() || !array->is_homogeneous(toml::node_type::table)) {
      toml_.fail(*entry.node, "\"layer\" is a list of tables, each written [[layer]]");
    }
    for (const toml::node& node : *array) {
      if (own_.size() == kMaxLayers) {
        toml_.fail(node, "a scene has " + std::to_string(kMaxLayers) + " layers at most");
      }
      own_.push_back(layerOf(*node.as_table()));
    }
  }

  Layer layerOf(const toml::table& table) const {
    Layer layer;
    for (const TomlEntry& entry : inFileOrder(table)) {
      const TomlEntry subtable{"layer." + entry.key, entry.node};  // as its header names it
      if (entry.key == "name") {
        layer.name = toml_.textOf(entry);
      } else if (entry.key == "presets") {
        takePresets(layer, entry, Origin::Layer);
      } else if (entry.key == "params") {
        takeParams(layer, subtable, Origin::Layer);
      } else if (entry.key == "mask") {
        layer.mask = entry.node->is_table() ? readMaskTable(toml_, subtable)
                                            : readMaskReference(toml_, subtable, access_);
      } else {
        rejectKey(entry, "key of a layer", kLayerKeys, "layer.");
      }
    }
    return layer;
  }

  // What is said for all layers comes first, so that a layer's own wins.
  void takeLayers() {
    if (own_.empty()) own_.emplace_back();
    checkTotal(&keyframesOf, kMaxKeyframes, "keyframes");
    checkTotal(&verticesOf, kMaxSceneVertices, "vertices of masks");
    scene_.layers.assign(own_.size(), forAll_);
    for (std::size_t i = 0; i < own_.size(); ++i) {
      Layer& layer = scene_.layers[i];
      layer.name = own_[i].name;
      if (own_[i].mask) layer.mask = std::move(own_[i].mask);
      std::ranges::move(own_[i].presets, std::back_inserter(layer.presets));
      std::ranges::move(own_[i].settings, std::back_inserter(layer.settings));
    }
  }

  // Before what is said for all layers is copied for each.
  void checkTotal(std::size_t (*countOf)(const Layer&), std::size_t most, const char* what) const {
    std::size_t total = own_.size() * countOf(forAll_);
    for (const Layer& layer : own_) total += countOf(layer);
    if (total <= most) return;
    throw WorkError(scene_.file.string() + ": its layers have " + std::to_string(total) + " " +
                    what + " in all, of " + std::to_string(most) + " at most");
  }

  void takePresets(Layer& layer, const TomlEntry& entry, Origin origin) const {
    for (const std::string& name : toml_.textsOf(entry)) {
      layer.presets.push_back({name, toml_.placeOf(*entry.node), origin});
    }
  }

  void takeParams(Layer& layer, const TomlEntry& table, Origin origin) const {
    for (const TomlEntry& entry : inFileOrder(toml_.tableOf(table))) {
      layer.settings.push_back(
          {entry.key, toml_.keysOf(entry), toml_.placeOf(*entry.node), origin});
    }
  }

  void takeMask(const TomlEntry& entry, Mask mask) {
    if (forAll_.mask) toml_.fail(*entry.node, "the scene has a mask already");
    forAll_.mask = std::move(mask);
  }

  // Names the table that the key was meant for, below `prefix` where that has such tables itself.
  [[noreturn]] void rejectKey(const TomlEntry& entry, const std::string& kind,
                              std::span<const SceneKey> known, const std::string& prefix) const {
    const auto sendTo = [&](const std::string& table) {
      toml_.fail(*entry.node, inQuotes(entry.key) + " belongs under [" + table + "]");
    };
    const auto isOneOf = [&](std::span<const SceneKey> keys) {
      return std::ranges::find(keys, entry.key, &SceneKey::name) != keys.end();
    };
    if (isOneOf(kSceneKeys)) sendTo("scene");
    if (isOneOf(kMaskKeys)) sendTo(prefix + "mask");
    const bool isLabel = !entry.key.empty() && entry.key[0] >= 'A' && entry.key[0] <= 'Z';
    if (isLabel && !entry.node->is_table()) sendTo(prefix + "params");
    toml_.unknownKey(entry, kind, namesOf(known));
  }

  brisel::FrameSize sizeOf(const TomlEntry& entry) const {
    const toml::array* array = entry.node->as_array();
    if (array && array->size() == 2) {
      const auto width = (*array)[0].value<std::int64_t>();
      const auto height = (*array)[1].value<std::int64_t>();
      const auto isSide = [](auto side) { return side && *side >= 1 && *side <= kMaxSide; };
      if (isSide(width) && isSide(height)) {
        return {static_cast<int>(*width), static_cast<int>(*height)};
      }
    }
    toml_.fail(*entry.node, "size is [WIDTH, HEIGHT], each from 1 to " + std::to_string(kMaxSide));
  }

  FrameRate rateOf(const TomlEntry& entry) const {
    std::optional<FrameRate> rate;
    if (const auto text = entry.node->value<std::string_view>()) {
      rate = frameRateFromText(*text);
    } else if (const auto number = entry.node->value<double>()) {
      rate = frameRateFromNumber(*number);
    }
    if (!rate) {
      toml_.fail(*entry.node, "fps is a number above 0, up to " + numberText(kMaxFramesPerSecond) +
                                  ", or a fraction such as \"30000/1001\"");
    }
    return *rate;
  }

  int depthOf(const TomlEntry& entry) const {
    const auto bits = entry.node->value_exact<std::int64_t>();
    if (!bits || (*bits != 8 && *bits != 16)) toml_.fail(*entry.node, "depth is 8 or 16");
    return static_cast<int>(*bits);
  }

  TomlReader toml_;
  const FileAccess& access_;
  Scene scene_;
  Layer forAll_;            // what the scene says for all of its layers
  std::vector<Layer> own_;  // what each [[layer]] says
};

}  // namespace

Scene readScene(const std::filesystem::path& file, const FileAccess& access) {
  return SceneReader(TomlReader(file), access).read();
}

Scene sceneFromText(const std::filesystem::path& file, std::string text, const FileAccess& access) {
  return SceneReader(TomlReader(file, std::move(text)), access).read();
}

std::string layerPrefix(const Scene& scene, std::size_t layer) {
  if (scene.layers.size() == 1) return {};
  const std::string& name = scene.layers[layer].name;
  return "layer " + (name.empty() ? std::to_string(layer + 1) : inQuotes(name)) + ": ";
}

}  // namespace scene
