#include "cli/scene/scene.h"

#include <algorithm>

#include "cli/scene/scene_keys.h"
#include "cli/scene/scene_mask.h"
#include "cli/scene/toml_reader.h"
#include "cli/support/errors.h"
#include "cli/support/numbers.h"

namespace cli {
namespace {

class SceneReader {
 public:
  explicit SceneReader(const std::filesystem::path& file) : toml_(file) { scene_.file = file; }

  Scene read() {
    const toml::table root = toml_.parse();
    const std::vector<std::string> sceneKeys = namesOf(kSceneKeys);
    for (const TomlEntry& entry : inFileOrder(root)) {
      if (entry.key == "scene") {
        readSceneTable(toml_.tableOf(entry));
      } else if (entry.key == "params") {
        readParams(toml_.tableOf(entry));
      } else if (entry.key == "mask") {
        takeMask(entry, readMaskTable(toml_, entry));
      } else if (std::ranges::find(sceneKeys, entry.key) != sceneKeys.end()) {
        toml_.fail(*entry.node, inQuotes(entry.key) + " belongs under [scene]");
      } else {
        toml_.unknownKey(entry, "table", namesOf(kTables));
      }
    }
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
        scene_.input = scene_.file.parent_path() / toml_.textOf(entry);
        scene_.inputPlace = toml_.placeOf(*entry.node);
      } else if (entry.key == "presets") {
        for (const std::string& name : toml_.textsOf(entry)) {
          scene_.presets.push_back({name, toml_.placeOf(*entry.node)});
        }
      } else if (entry.key == "mask") {
        takeMask(entry, readMaskReference(toml_, entry));
      } else {
        toml_.unknownKey(entry, "key", namesOf(kSceneKeys));
      }
    }
  }

  void readParams(const toml::table& table) {
    for (const TomlEntry& entry : inFileOrder(table)) {
      scene_.settings.push_back({entry.key, toml_.keysOf(entry), toml_.placeOf(*entry.node)});
    }
  }

  void takeMask(const TomlEntry& entry, Mask mask) {
    if (scene_.mask) toml_.fail(*entry.node, "the scene has a mask already");
    scene_.mask = std::move(mask);
  }

  FrameSize sizeOf(const TomlEntry& entry) const {
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

  Depth depthOf(const TomlEntry& entry) const {
    const auto bits = entry.node->value_exact<std::int64_t>();
    if (!bits || (*bits != 8 && *bits != 16)) toml_.fail(*entry.node, "depth is 8 or 16");
    return static_cast<Depth>(*bits);
  }

  TomlReader toml_;
  Scene scene_;
};

}  // namespace

Scene readScene(const std::filesystem::path& file) {
  return SceneReader(file).read();
}

PresetChoice presetFromOption(const std::string& name) {
  return {name, "--preset " + inQuotes(name), true};
}

Setting settingFromOption(const std::string& text) {
  const std::string place = "--set " + inQuotes(text);
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    throw UsageError(place + ": a setting reads \"LABEL=VALUE\", such as \"Size=40\"");
  }
  Setting setting{std::string(trimmed(text.substr(0, equals))), {}, place, true};
  setting.keys = {{{.time = 0, .place = place}, userValueFromText(text.substr(equals + 1))}};
  return setting;
}

}  // namespace cli
