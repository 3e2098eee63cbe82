#include "scene/toml_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

#include "scene/file_access.h"
#include "scene/scene.h"
#include "scene/scene_keys.h"
#include "scene/text/errors.h"
#include "scene/text/nearest_name.h"
#include "scene/text/numbers.h"
#include "scene/text/toml_depth.h"

namespace scene {
namespace {

// The last key of the text, which ends before its value: "Size" of `"Size" = `.
std::string lastKey(std::string_view text) {
  const std::size_t end = text.find_last_not_of(" \t=");
  if (end == std::string_view::npos) return {};
  text = text.substr(0, end + 1);
  const char last = text.back();
  if (last == '"' || last == '\'') {
    text.remove_suffix(1);
    return std::string(text.substr(text.rfind(last) + 1));
  }
  return std::string(text.substr(text.find_last_of(" \t{,") + 1));
}

// Taken from the line itself, as the parser's message garbles keys in quotes.
std::string keyGivenTwice(const std::string& text, toml::source_position position) {
  std::istringstream stream(text);
  std::string line;
  for (toml::source_index i = 0; i < position.line; ++i) std::getline(stream, line);
  const std::string_view start = trimmed(line);
  if (start.starts_with('[')) return std::string(start.substr(0, start.find(']') + 1));
  return inQuotes(lastKey(std::string_view(line).substr(0, position.column - 1)));
}

}  // namespace

std::vector<TomlEntry> inFileOrder(const toml::table& table) {
  std::vector<TomlEntry> entries;
  for (const auto& [key, node] : table) entries.push_back({std::string(key.str()), &node});
  std::ranges::sort(entries, [](const TomlEntry& a, const TomlEntry& b) {
    const toml::source_position first = a.node->source().begin;
    const toml::source_position second = b.node->source().begin;
    return first < second;
  });
  return entries;
}

toml::table TomlReader::parse() const {
  const std::string name = file_.string();
  const std::string text = text_ ? *text_ : textOfFile(file_, "the scene " + inQuotes(name));
  if (const int line = lineOfTooDeepKey(text); line > 0) {
    throw WorkError(name + ":" + std::to_string(line) + ": a key has more than " +
                    std::to_string(kMaxKeyParts) + " parts");
  }
  try {
    return toml::parse(text);  // with a name, want of memory for it would end the program
  } catch (const toml::parse_error& parseError) {
    const toml::source_position position = parseError.source().begin;
    const std::string place = position.line > 0 ? name + ":" + std::to_string(position.line) : name;
    if (parseError.description().find("redefine existing") != std::string_view::npos) {
      const std::string key = keyGivenTwice(text, position);
      const bool ofLayers = key == "[params]" || key == "[mask]";
      throw WorkError(place + ": " + key + " is given a second time; " +
                      (ofLayers ? "a layer's own is [layer." + key.substr(1) : "once is enough"));
    }
    if (parseError.description().find("nested value depth") != std::string_view::npos) {
      throw WorkError(place + ": values are nested too deeply");
    }
    throw WorkError(place + ": " + std::string(parseError.description()));
  }
}

const toml::table& TomlReader::tableOf(const TomlEntry& entry) const {
  const toml::table* table = entry.node->as_table();
  if (!table) fail(*entry.node, inQuotes(entry.key) + " is a table, written [" + entry.key + "]");
  return *table;
}

std::string TomlReader::textOf(const TomlEntry& entry,
                               const std::vector<std::string>& choices) const {
  const auto text = entry.node->value_exact<std::string>();
  if (!text || text->empty()) fail(*entry.node, entry.key + " is text in quotes");
  // A file's name would end there for the system, but not for those who check it.
  if (text->find('\0') != text->npos) fail(*entry.node, entry.key + " holds a NUL character");
  if (!choices.empty() && std::ranges::find(choices, *text) == choices.end()) {
    fail(*entry.node, entry.key + " is " + inQuotes(choices[0]) + " or " + inQuotes(choices[1]) +
                          ", not " + inQuotes(*text));
  }
  return *text;
}

std::vector<std::string> TomlReader::textsOf(const TomlEntry& entry) const {
  const toml::array* array = entry.node->as_array();
  std::vector<std::string> texts;
  for (std::size_t i = 0; array && i < array->size(); ++i) {
    texts.push_back((*array)[i].value_exact<std::string>().value_or(""));
  }
  if (!array || std::ranges::find(texts, "") != texts.end()) {
    fail(*entry.node, entry.key + " is a list of texts in quotes");
  }
  return texts;
}

bool TomlReader::flagOf(const TomlEntry& entry) const {
  const auto flag = entry.node->value_exact<bool>();
  if (!flag) fail(*entry.node, entry.key + " is true or false");
  return *flag;
}

int TomlReader::integerOf(const TomlEntry& entry, int least, int greatest) const {
  const auto number = entry.node->value_exact<std::int64_t>();
  if (!number || *number < least || *number > greatest) {
    fail(*entry.node, entry.key + " is a whole number from " + std::to_string(least) + " to " +
                          std::to_string(greatest));
  }
  return static_cast<int>(*number);
}

UserValue TomlReader::valueOf(const TomlEntry& entry) const {
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

std::vector<Setting::Key> TomlReader::keysOf(const TomlEntry& entry) const {
  const toml::array* array = entry.node->as_array();
  if (array && !array->empty() && array->front().is_table()) return keyframesOf(entry, *array);
  return {{{.time = 0, .place = placeOf(*entry.node)}, valueOf(entry)}};
}

std::vector<Setting::Key> TomlReader::keyframesOf(const TomlEntry& entry,
                                                  const toml::array& array) const {
  std::vector<Setting::Key> keys;
  for (const toml::node& node : array) {
    const toml::table* table = node.as_table();
    const toml::node* value = table ? table->get("value") : nullptr;
    if (!value || !table->contains("frame")) {
      fail(node, inQuotes(entry.key) +
                     ": a keyframe reads { frame = 12, value = ... }, with ease = ... if need be");
    }
    Keyframe key{.time = 0, .place = placeOf(*value)};
    for (const TomlEntry& item : inFileOrder(*table)) {
      if (item.key == "frame") {
        setTime(key, entry.key, *item.node);
      } else if (item.key == "ease") {
        key.ease = easeOf(entry.key, *item.node);
      } else if (item.key != "value") {
        unknownKey(item, "key of a keyframe", namesOf(kKeyframeKeys));
      }
    }
    keys.emplace_back(std::move(key), valueOf({entry.key, value}));
  }
  return keys;
}

void TomlReader::setTime(Keyframe& key, const std::string& label, const toml::node& node) const {
  const auto number = node.value<double>();
  const auto text = node.value_exact<std::string>();
  const auto seconds = text ? secondsFromText(*text) : std::nullopt;
  const auto time = seconds ? seconds : number;
  if (!time || !(std::abs(*time) <= kMaxFrames)) {  // not-a-number is no time either
    fail(node, inQuotes(label) + ": frame is a number, or a time such as \"1.5s\", at most " +
                   std::to_string(kMaxFrames));
  }
  key.time = *time;
  key.inSeconds = seconds.has_value();
}

Ease TomlReader::easeOf(const std::string& label, const toml::node& node) const {
  const auto isTime = [](double x) { return x >= 0 && x <= 1; };
  const auto isShare = [](double y) { return std::abs(y) <= kMostShare; };
  if (const auto name = node.value_exact<std::string>()) {
    if (const auto ease = easeByName(*name)) return *ease;
    fail(node,
         inQuotes(label) + ": there is no ease " + inQuotes(*name) + orNearest(*name, easeNames()));
  }
  if (const toml::array* array = node.as_array(); array && array->size() == 4) {
    std::array<double, 4> handles{};
    for (std::size_t i = 0; i < 4; ++i) handles[i] = finiteOf(label, (*array)[i]);
    const auto [x1, y1, x2, y2] = handles;
    if (isTime(x1) && isTime(x2) && isShare(y1) && isShare(y2)) return {false, x1, y1, x2, y2};
  }
  fail(node, inQuotes(label) +
                 ": ease is a name such as \"in-out\", or the handles [x1, y1, x2, y2] of a curve, "
                 "x1 and x2 from 0 to 1, y1 and y2 from " +
                 numberText(-kMostShare) + " to " + numberText(kMostShare));
}

double TomlReader::finiteOf(const std::string& key, const toml::node& node) const {
  const auto number = node.value<double>();
  if (!number) fail(node, inQuotes(key) + ": a list holds numbers only, or keyframes only");
  if (!std::isfinite(*number)) fail(node, inQuotes(key) + ": a number must be finite");
  return *number;
}

std::string TomlReader::placeOf(const toml::node& node) const {
  return file_.string() + ":" + std::to_string(node.source().begin.line);
}

void TomlReader::fail(const toml::node& node, const std::string& what) const {
  throw WorkError(placeOf(node) + ": " + what);
}

void TomlReader::unknownKey(const TomlEntry& entry, const std::string& kind,
                            const std::vector<std::string>& known) const {
  fail(*entry.node, "unknown " + kind + " " + inQuotes(entry.key) + orNearest(entry.key, known));
}

}  // namespace scene
