#include "desk/document/scene_tables.h"
#include "desk/document/value_text.h"
#include "scene/text/errors.h"

namespace desk {
namespace {

using scene::WorkError;
using Span = TomlEdit::Span;

/// All lines of a layer, which nothing else may stand between.
Span blockOfLayer(const TomlEdit& toml, std::size_t layer) {
  checkHeader(toml, layer);
  const Span block = toml.blockOf(layerOf(toml, layer));
  for (const auto& [key, node] : toml.root()) {
    const std::size_t at = toml.offsetOf(key.source().begin);
    if (key != "layer" && at > block.begin && at < block.end) {
      throw WorkError("[" + std::string(key.str()) +
                      "] stands between the lines of a layer, which "
                      "cannot be moved or removed here; put it above all layers");
    }
  }
  return block;
}

/// The lines of a table, taken out of the text: with another header, to be put elsewhere.
std::string cutTable(TomlEdit& toml, const std::filesystem::path& file, const toml::table& table,
                     const std::string& header) {
  if (!toml.hasHeader(table)) {
    throw WorkError(
        "a table of the scene is written without a header, which cannot be moved here; "
        "edit its text");
  }
  const Span block = toml.blockOf(table);
  const Span old = toml.spanOf(table);
  const std::string& text = toml.text();
  std::string lines = text.substr(block.begin, old.begin - block.begin) + header +
                      text.substr(old.end, block.end - old.end);
  toml = TomlEdit(toml.withoutLines(block), file);
  return lines;
}

}  // namespace

/// What the scene says for its one layer becomes what that layer says itself.
std::string SceneText::withLayerOfItsOwn(std::string_view name) const {
  TomlEdit toml(text(), file_);
  std::string layer = "[[layer]]\nname = " + tomlString(name) + "\n";
  for (const char* key : {"presets", "mask"}) {
    const toml::table* table = tableIn(toml.root(), "scene");
    const toml::node* node = table ? table->get(key) : nullptr;
    if (!node) continue;
    layer += std::string(key) + " = " + toml.textOf(*node) + "\n";
    toml = TomlEdit(toml.withoutEntry(*table, key), file_);
  }
  for (const char* key : {"params", "mask"}) {
    const toml::table* table = tableIn(toml.root(), key);
    if (!table) continue;
    layer += "\n" + cutTable(toml, file_, *table, "[layer." + std::string(key) + "]");
    if (layer.back() != '\n') layer += '\n';
  }
  return checked(toml.withLinesAt(toml.text().size(), layer), file_);
}

std::string SceneText::withNewLayer(std::string_view name) const {
  SceneText now = *this;
  if (layerCount() == 0) now = SceneText(withLayerOfItsOwn("Layer 1"), file_);
  const std::size_t at = now.toml_->blockOf(layerOf(*now.toml_, now.layerCount() - 1)).end;
  return checked(now.toml_->withLinesAt(at, "[[layer]]\nname = " + tomlString(name) + "\n"), file_);
}

std::string SceneText::withoutLayer(std::size_t layer) const {
  const Span block = blockOfLayer(*toml_, layer);
  return checked(toml_->withoutLines(block), file_);
}

std::string SceneText::withLayerName(std::size_t layer, std::string_view name) const {
  const toml::table& table = layerOf(*toml_, layer);
  return checked(name.empty() ? toml_->withoutEntry(table, "name")
                              : toml_->withEntry(table, "name", tomlString(name)),
                 file_);
}

std::string SceneText::withLayerMoved(std::size_t layer, std::size_t to) const {
  std::vector<Span> blocks;
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < layerCount(); ++i) {
    blocks.push_back(blockOfLayer(*toml_, i));
    texts.push_back(text().substr(blocks[i].begin, blocks[i].end - blocks[i].begin));
    if (texts[i].back() != '\n') texts[i] += '\n';
  }
  std::string moved = std::move(texts[layer]);
  texts.erase(texts.begin() + static_cast<std::ptrdiff_t>(layer));
  texts.insert(texts.begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
  std::string result = text();
  for (std::size_t i = blocks.size(); i-- > 0;) {
    result.replace(blocks[i].begin, blocks[i].end - blocks[i].begin, texts[i]);
  }
  return checked(std::move(result), file_);
}

}  // namespace desk
