#include "scene.h"

#include <toml++/toml.h>
#include <algorithm>
#include <cmath>

#include "errors.h"
#include "nearest_name.h"
#include "numbers.h"

namespace cli {
namespace {

struct Entry {
  std::string key;
  const toml::node* node;
};

// The table's entries as they stand in the file; the parser sorts them by name.
std::vector<Entry> inFileOrder(const toml::table& table) {
  std::vector<Entry> entries;
  for (const auto& [key, node] : table) entries.push_back({std::string(key.str()), &node});
  std::ranges::sort(entries, [](const Entry& a, const Entry& b) {
    const toml::source_position first = a.node->source().begin;
    const toml::source_position second = b.node->source().begin;
    return first < second;
  });
  return entries;
}

class SceneReader {
 public:
  explicit SceneReader(const std::filesystem::path& file) { scene_.file = file; }

  Scene read() {
    const toml::table root = parse();
    for (const Entry& entry : inFileOrder(root)) {
      if (entry.key == "scene") {
        readSceneTable(tableOf(entry));
      } else if (entry.key == "params") {
        readParams(tableOf(entry));
      } else if (entry.key == "mask") {
        fail(*entry.node, "[mask]: masks are not supported yet by this version");
      } else {
        unknownKey(entry, "table", {"scene", "params"});
      }
    }
    return std::move(scene_);
  }

 private:
  toml::table parse() const {
    const std::string name = scene_.file.string();
    std::error_code error;
    if (!std::filesystem::exists(scene_.file, error)) {
      throw WorkError("the scene " + inQuotes(name) + " does not exist");
    }
    if (std::filesystem::is_directory(scene_.file, error)) {
      throw WorkError("the scene " + inQuotes(name) + " is a folder");
    }
    try {
      return toml::parse_file(name);
    } catch (const toml::parse_error& parseError) {
      const auto line = parseError.source().begin.line;
      const std::string place = line > 0 ? name + ":" + std::to_string(line) : name;
      throw WorkError(place + ": " + std::string(parseError.description()));
    }
  }

  void readSceneTable(const toml::table& table) {
    for (const auto& entry : inFileOrder(table)) {
      if (entry.key == "size") {
        scene_.size = sizeOf(entry);
      } else if (entry.key == "frames") {
        scene_.frames = integerOf(entry, 1, kMaxFrames);
      } else if (entry.key == "fps") {
        scene_.rate = rateOf(entry);
      } else if (entry.key == "depth") {
        scene_.depth = depthOf(entry);
      } else if (entry.key == "quality") {
        scene_.highQuality = textOf(entry, {"high", "low"}) == "high";
      } else if (entry.key == "input") {
        scene_.input = scene_.file.parent_path() / textOf(entry, {});
        scene_.inputPlace = placeOf(*entry.node);
      } else {
        unknownKey(entry, "key", {"size", "frames", "fps", "depth", "quality", "input"});
      }
    }
  }

  void readParams(const toml::table& table) {
    for (const Entry& entry : inFileOrder(table)) {
      Setting setting{entry.key, {}, placeOf(*entry.node)};
      const toml::array* array = entry.node->as_array();
      if (array && !array->empty() && array->front().is_table()) {
        setting.keys = keyframesOf(entry, *array);
      } else {
        setting.keys = {{0, valueOf(entry), setting.place}};
      }
      scene_.settings.push_back(std::move(setting));
    }
  }

  std::vector<Setting::Key> keyframesOf(const Entry& entry, const toml::array& array) const {
    std::vector<Setting::Key> keys;
    for (const toml::node& node : array) {
      const toml::table* table = node.as_table();
      const toml::node* frame = table ? table->get("frame") : nullptr;
      const toml::node* value = table ? table->get("value") : nullptr;
      const auto number = frame ? frame->value<double>() : std::nullopt;
      if (!number || !std::isfinite(*number) || !value || table->size() != 2) {
        fail(node, inQuotes(entry.key) + ": a keyframe reads { frame = NUMBER, value = ... }");
      }
      if (!keys.empty() && *number <= keys.back().frame) {
        fail(node, inQuotes(entry.key) + ": the keyframe at frame " + numberText(*number) +
                       " does not come after the one at frame " + numberText(keys.back().frame));
      }
      keys.push_back({*number, valueOf({entry.key, value}), placeOf(*value)});
    }
    return keys;
  }

  UserValue valueOf(const Entry& entry) const {
    if (const auto* flag = entry.node->as_boolean()) return flag->get();
    if (const auto* text = entry.node->as_string()) return text->get();
    if (entry.node->is_number()) return finiteOf(entry.key, *entry.node);
    if (const toml::array* array = entry.node->as_array()) {
      std::vector<double> numbers;
      for (const toml::node& node : *array) numbers.push_back(finiteOf(entry.key, node));
      return numbers;
    }
    fail(*entry.node, inQuotes(entry.key) +
                          ": a value is a number, text, true or false, a list of numbers, or a "
                          "list of keyframes");
  }

  double finiteOf(const std::string& key, const toml::node& node) const {
    const auto number = node.value<double>();
    if (!number) fail(node, inQuotes(key) + ": a list holds numbers only, or keyframes only");
    if (!std::isfinite(*number)) fail(node, inQuotes(key) + ": a number must be finite");
    return *number;
  }

  FrameSize sizeOf(const Entry& entry) const {
    const toml::array* array = entry.node->as_array();
    if (array && array->size() == 2) {
      const auto width = (*array)[0].value<std::int64_t>();
      const auto height = (*array)[1].value<std::int64_t>();
      const auto isSide = [](auto side) { return side && *side >= 1 && *side <= kMaxSide; };
      if (isSide(width) && isSide(height)) {
        return {static_cast<int>(*width), static_cast<int>(*height)};
      }
    }
    fail(*entry.node, "size is [WIDTH, HEIGHT], each from 1 to " + std::to_string(kMaxSide));
  }

  int integerOf(const Entry& entry, int least, int greatest) const {
    const auto number = entry.node->value_exact<std::int64_t>();
    if (!number || *number < least || *number > greatest) {
      fail(*entry.node, entry.key + " is a whole number from " + std::to_string(least) + " to " +
                            std::to_string(greatest));
    }
    return static_cast<int>(*number);
  }

  FrameRate rateOf(const Entry& entry) const {
    std::optional<FrameRate> rate;
    if (const auto text = entry.node->value<std::string_view>()) {
      rate = frameRateFromText(*text);
    } else if (const auto number = entry.node->value<double>()) {
      rate = frameRateFromNumber(*number);
    }
    if (!rate) {
      fail(*entry.node, "fps is a number above 0, up to " + numberText(kMaxFramesPerSecond) +
                            ", or a fraction such as \"30000/1001\"");
    }
    return *rate;
  }

  Depth depthOf(const Entry& entry) const {
    const auto bits = entry.node->value_exact<std::int64_t>();
    if (!bits || (*bits != 8 && *bits != 16)) fail(*entry.node, "depth is 8 or 16");
    return static_cast<Depth>(*bits);
  }

  // One of the choices, or any text when there are none.
  std::string textOf(const Entry& entry, const std::vector<std::string>& choices) const {
    const auto text = entry.node->value_exact<std::string>();
    if (!text || text->empty()) fail(*entry.node, entry.key + " is text in quotes");
    if (!choices.empty() && std::ranges::find(choices, *text) == choices.end()) {
      fail(*entry.node, entry.key + " is " + inQuotes(choices[0]) + " or " + inQuotes(choices[1]) +
                            ", not " + inQuotes(*text));
    }
    return *text;
  }

  const toml::table& tableOf(const Entry& entry) const {
    const toml::table* table = entry.node->as_table();
    if (!table) fail(*entry.node, inQuotes(entry.key) + " is a table, written [" + entry.key + "]");
    return *table;
  }

  [[noreturn]] void unknownKey(const Entry& entry, const std::string& kind,
                               const std::vector<std::string>& known) const {
    fail(*entry.node, "unknown " + kind + " " + inQuotes(entry.key) + "; the nearest is " +
                          inQuotes(nearestName(entry.key, known)));
  }

  std::string placeOf(const toml::node& node) const {
    return scene_.file.string() + ":" + std::to_string(node.source().begin.line);
  }

  [[noreturn]] void fail(const toml::node& node, const std::string& what) const {
    throw WorkError(placeOf(node) + ": " + what);
  }

  Scene scene_;
};

}  // namespace

Scene readScene(const std::filesystem::path& file) {
  return SceneReader(file).read();
}

Setting settingFromOption(const std::string& text) {
  const std::string place = "--set " + inQuotes(text);
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    throw UsageError(place + ": a setting reads \"LABEL=VALUE\", such as \"Size=40\"");
  }
  Setting setting{std::string(trimmed(text.substr(0, equals))), {}, place, true};
  setting.keys = {{0, userValueFromText(text.substr(equals + 1)), place}};
  return setting;
}

}  // namespace cli
