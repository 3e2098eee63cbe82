#include "desk/document/scene_text.h"

#include <algorithm>

#include "desk/document/scene_tables.h"
#include "desk/document/value_text.h"

namespace desk {
namespace {

using Span = TomlEdit::Span;

const toml::node* paramIn(const TomlEdit& toml, LayerChoice layer, brisel::ParamIndex parameter) {
  const toml::table* params = tableIn(ownerOf(toml, layer), "params");
  return params ? params->get(brisel::parameterSpec(parameter).label) : nullptr;
}

bool isKeys(const toml::node& node) {
  const toml::array* array = node.as_array();
  return array && !array->empty() && array->front().is_table();
}

/// A table of that name where there was none: among the layer's, or before all layers.
std::string withTable(const TomlEdit& toml, LayerChoice layer, const std::string& name,
                      const std::string& lines) {
  if (layer) checkHeader(toml, *layer);
  const std::string text = "[" + (layer ? "layer." : std::string()) + name + "]\n" + lines;
  const toml::array* layers = layersOf(toml);
  std::size_t at = toml.text().size();
  if (layer) {
    at = toml.blockOf(layerOf(toml, *layer)).end;
  } else if (layers && !layers->empty()) {
    at = toml.blockOf(layerOf(toml, 0)).begin;
  }
  return toml.withLinesAt(at, text);
}

std::string withParam(const TomlEdit& toml, LayerChoice layer, brisel::ParamIndex parameter,
                      const std::string& value) {
  const std::string key = tomlString(brisel::parameterSpec(parameter).label);
  const toml::table* params = tableIn(ownerOf(toml, layer), "params");
  return params ? toml.withEntry(*params, key, value)
                : withTable(toml, layer, "params", key + " = " + value + "\n");
}

/// Keyframes as the array's elements, each with the words that the old ones have for the same.
template <class Key, class ToText>
std::vector<std::string> keyTexts(const TomlEdit& toml, const toml::node* node,
                                  const std::vector<Key>& before, const std::vector<Key>& keys,
                                  const ToText& toText) {
  const bool isKeyed = node && isKeys(*node) && node->as_array()->size() == before.size();
  const auto written = [&](const std::string& otherwise, const char* name, const auto& isSame) {
    for (std::size_t i = 0; isKeyed && i < before.size(); ++i) {
      const toml::node* part = (*node->as_array())[i].as_table()->get(name);
      if (part && isSame(before[i])) return toml.textOf(*part);
    }
    return otherwise;
  };
  std::vector<std::string> texts;
  for (const Key& key : keys) {
    const std::string value = toText(key.value);
    const std::string ease = easeText(key.ease);
    std::string text = "{ frame = " + written(shortNumber(key.time), "frame",
                                              [&](const Key& old) { return old.time == key.time; });
    text += ", value = " +
            written(value, "value", [&](const Key& old) { return toText(old.value) == value; });
    if (!key.ease.isStraight()) {
      text += ", ease = " +
              written(ease, "ease", [&](const Key& old) { return easeText(old.ease) == ease; });
    }
    text += " }";
    // An element that says the same keeps its words altogether.
    for (std::size_t i = 0; isKeyed && i < before.size(); ++i) {
      const bool saysTheSame = before[i].time == key.time && toText(before[i].value) == value &&
                               easeText(before[i].ease) == ease;
      if (saysTheSame) text = toml.textOf((*node->as_array())[i]);
    }
    texts.push_back(std::move(text));
  }
  return texts;
}

std::string inBrackets(const std::vector<std::string>& elements) {
  std::string text = "[ ";
  for (const std::string& element : elements) text += (text.size() > 2 ? ", " : "") + element;
  return text + " ]";
}

}  // namespace

SceneText::SceneText(std::string text, std::filesystem::path file)
    : file_(std::move(file)), toml_(std::make_shared<const TomlEdit>(std::move(text), file_)) {}

const std::string& SceneText::text() const {
  return toml_->text();
}

std::size_t SceneText::layerCount() const {
  const toml::array* layers = layersOf(*toml_);
  return layers ? layers->size() : 0;
}

bool SceneText::sets(LayerChoice layer, brisel::ParamIndex parameter) const {
  return paramIn(*toml_, layer, parameter) != nullptr;
}

bool SceneText::isKeyed(LayerChoice layer, brisel::ParamIndex parameter) const {
  const toml::node* node = paramIn(*toml_, layer, parameter);
  return node && isKeys(*node);
}

std::string SceneText::withValue(LayerChoice layer, brisel::ParamIndex parameter,
                                 const scene::ParamValue& value) const {
  const std::string text = valueText(brisel::parameterSpec(parameter), value);
  return checked(withParam(*toml_, layer, parameter, text), file_);
}

std::string SceneText::withKeys(LayerChoice layer, brisel::ParamIndex parameter,
                                const std::vector<ParamKey>& keys,
                                const std::vector<ParamKey>& before) const {
  const toml::node* node = paramIn(*toml_, layer, parameter);
  const auto toText = [&](const scene::ParamValue& value) {
    return valueText(brisel::parameterSpec(parameter), value);
  };
  const std::vector<std::string> texts = keyTexts(*toml_, node, before, keys, toText);
  return checked(node && isKeys(*node) ? toml_->withElements(*node->as_array(), texts)
                                       : withParam(*toml_, layer, parameter, inBrackets(texts)),
                 file_);
}

std::string SceneText::withoutValue(LayerChoice layer, brisel::ParamIndex parameter) const {
  const toml::table* params = tableIn(ownerOf(*toml_, layer), "params");
  if (!params) return text();
  return checked(toml_->withoutEntry(*params, brisel::parameterSpec(parameter).label), file_);
}

std::string SceneText::withoutValues(LayerChoice layer) const {
  SceneText now = *this;
  for (std::int32_t index = 1; index < brisel::kParamCount; ++index) {
    const auto parameter = static_cast<brisel::ParamIndex>(index);
    if (now.sets(layer, parameter)) now = SceneText(now.withoutValue(layer, parameter), file_);
  }
  return now.text();
}

std::vector<std::string> SceneText::presets(LayerChoice layer) const {
  const toml::table* table = layer ? &layerOf(*toml_, *layer) : tableIn(toml_->root(), "scene");
  const toml::array* array = table ? (*table)["presets"].as_array() : nullptr;
  std::vector<std::string> names;
  for (std::size_t i = 0; array && i < array->size(); ++i) {
    names.push_back((*array)[i].value_or(std::string()));
  }
  return names;
}

std::string SceneText::withPresets(LayerChoice layer, const std::vector<std::string>& names) const {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + tomlString(name);
  if (!layer) return withSceneKey("presets", names.empty() ? "" : "[" + list + "]");
  const toml::table& table = layerOf(*toml_, *layer);
  return checked(names.empty() ? toml_->withoutEntry(table, "presets")
                               : toml_->withEntry(table, "presets", "[" + list + "]"),
                 file_);
}

bool SceneText::hasMask(LayerChoice layer) const {
  const toml::table& owner = ownerOf(*toml_, layer);
  return owner.contains("mask") || (!layer && owner["scene"]["mask"]);
}

std::string SceneText::withMask(LayerChoice layer, const std::optional<scene::Mask>& mask,
                                const std::optional<scene::Mask>& before) const {
  const toml::table& owner = ownerOf(*toml_, layer);
  const toml::table* table = tableIn(owner, "mask");
  if (!table || !mask) {  // what refers to a path of a file gives way to a table
    SceneText without = *this;
    if (table && toml_->hasHeader(*table)) {
      without = SceneText(toml_->withoutLines(toml_->blockOf(*table)), file_);
    } else if (owner.contains("mask")) {
      without = SceneText(toml_->withoutEntry(owner, "mask"), file_);
    } else if (!layer) {
      without = SceneText(withSceneKey("mask", ""), file_);
    }
    if (!mask) return without.text();
    const std::vector<std::string> texts =
        keyTexts(*without.toml_, nullptr, {}, mask->keys, shapeText);
    const std::string path =
        mask->keys.size() == 1 ? shapeText(mask->keys.front().value) : inBrackets(texts);
    return checked(withTable(*without.toml_, layer, "mask",
                             "path = " + path + (mask->inverted ? "\ninverted = true\n" : "\n")),
                   file_);
  }
  const toml::node* path = table->get("path");
  const std::vector<scene::Mask::Key> old = before ? before->keys : std::vector<scene::Mask::Key>();
  std::string text;
  if (mask->keys.size() == 1 && !(path && isKeys(*path))) {
    text = toml_->withEntry(*table, "path", shapeText(mask->keys.front().value));
  } else {
    const std::vector<std::string> texts = keyTexts(*toml_, path, old, mask->keys, shapeText);
    text = path && isKeys(*path) ? toml_->withElements(*path->as_array(), texts)
                                 : toml_->withEntry(*table, "path", inBrackets(texts));
  }
  const TomlEdit shaped(std::move(text), file_);
  const toml::table& now = *tableIn(ownerOf(shaped, layer), "mask");
  if (now["inverted"].value_or(false) == mask->inverted) return shaped.text();
  return checked(shaped.withEntry(now, "inverted", mask->inverted ? "true" : "false"), file_);
}

std::string SceneText::withSceneKey(std::string_view key, std::string_view value) const {
  const toml::table* table = tableIn(toml_->root(), "scene");
  const std::string name(key);
  if (value.empty()) return table ? checked(toml_->withoutEntry(*table, key), file_) : text();
  if (table) return checked(toml_->withEntry(*table, name, std::string(value)), file_);
  // Above all else but what the file begins with: what it is, and its schema.
  std::size_t at = text().size();
  for (const auto& [rootKey, node] : toml_->root()) {
    at = std::min(at, toml_->startOfLine(toml_->offsetOf(rootKey.source().begin)));
  }
  return checked(toml_->withLinesAt(at, "[scene]\n" + name + " = " + std::string(value) + "\n"),
                 file_);
}

}  // namespace desk
