#include "desk/document/scene_tables.h"

#include "scene/text/errors.h"

namespace desk {

const toml::array* layersOf(const TomlEdit& toml) {
  return toml.root()["layer"].as_array();
}

const toml::table& layerOf(const TomlEdit& toml, std::size_t layer) {
  return *(*layersOf(toml))[layer].as_table();
}

const toml::table& ownerOf(const TomlEdit& toml, LayerChoice layer) {
  return layer ? layerOf(toml, *layer) : toml.root();
}

const toml::table* tableIn(const toml::table& owner, std::string_view name) {
  return owner[name].as_table();
}

void checkHeader(const TomlEdit& toml, std::size_t layer) {
  if (toml.hasHeader(layerOf(toml, layer))) return;
  throw scene::WorkError(
      "the layers are written in one line, which cannot be edited here; write each as "
      "[[layer]]");
}

std::string checked(std::string text, const std::filesystem::path& file) {
  try {
    const TomlEdit parsed(text, file);
  } catch (const scene::WorkError&) {
    throw scene::WorkError(
        "the scene is written in a way that this cannot be changed in; edit its text");
  }
  return text;
}

}  // namespace desk
