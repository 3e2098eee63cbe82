// Where the tables of a scene stand in its TOML.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "desk/document/scene_text.h"
#include "desk/document/toml_edit.h"

namespace desk {

/// The [[layer]] tables; null where there are none.
const toml::array* layersOf(const TomlEdit& toml);
const toml::table& layerOf(const TomlEdit& toml, std::size_t layer);
/// The root, or the layer's table.
const toml::table& ownerOf(const TomlEdit& toml, LayerChoice layer);
const toml::table* tableIn(const toml::table& owner, std::string_view name);

/// Throws scene::WorkError where the layer is not below a header of its own.
void checkHeader(const TomlEdit& toml, std::size_t layer);

/// The text of an edit. Throws scene::WorkError where it is no TOML: the old text is written in a
/// way that the edit did not foresee.
std::string checked(std::string text, const std::filesystem::path& file);

}  // namespace desk
