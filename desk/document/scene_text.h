// The text of a scene file, and edits of it that leave all other lines as they are.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scene/keyframe.h"
#include "scene/mask.h"
#include "scene/parameter_values.h"

namespace desk {

class TomlEdit;

/// Which table an edit is for: a [[layer]], from 0 at the bottom, or none for what the scene says
/// for all layers.
using LayerChoice = std::optional<std::size_t>;

/// A value at a time, as the controls and the timeline know it; the time is frames.
using ParamKey = scene::KeyOf<scene::ParamValue>;

/// One text, and the values that it has once parsed. Every edit makes another text, in which
/// comments, order and spacing of what it does not concern are kept to the byte. Edits throw
/// scene::WorkError, one sentence, where a text is written in a way that they cannot change; no
/// edit makes a text that does not parse. A value is written as a person would: an item's name,
/// "#ffcc66", [0.5, 0.5], and numbers with no more digits than they need.
class SceneText {
 public:
  /// Throws scene::WorkError naming `file` and the line where the text is no TOML. `file` is only
  /// named, not read.
  SceneText(std::string text, std::filesystem::path file);

  const std::string& text() const;
  const std::filesystem::path& file() const { return file_; }

  /// The number of [[layer]] tables: 0 for a scene whose one layer is what [params] says.
  std::size_t layerCount() const;

  /// Whether that table itself says something of the parameter, and whether by keyframes, be it
  /// one alone.
  bool sets(LayerChoice layer, brisel::ParamIndex parameter) const;
  bool isKeyed(LayerChoice layer, brisel::ParamIndex parameter) const;

  /// A constant in place of whatever the table says.
  std::string withValue(LayerChoice layer, brisel::ParamIndex parameter,
                        const scene::ParamValue& value) const;
  /// Keyframes in place of whatever the table says, in ascending order; one or more. `before` are
  /// those that it has now: a time, a value or an ease that is one of theirs stays as it is
  /// written.
  std::string withKeys(LayerChoice layer, brisel::ParamIndex parameter,
                       const std::vector<ParamKey>& keys,
                       const std::vector<ParamKey>& before) const;
  std::string withoutValue(LayerChoice layer, brisel::ParamIndex parameter) const;
  /// Without any entry of the table's parameters.
  std::string withoutValues(LayerChoice layer) const;

  /// The presets that the table names, and the text that names others; none removes the entry.
  std::vector<std::string> presets(LayerChoice layer) const;
  std::string withPresets(LayerChoice layer, const std::vector<std::string>& names) const;

  /// A mask in place of what the table says; none removes it. `before` is what it says now.
  std::string withMask(LayerChoice layer, const std::optional<scene::Mask>& mask,
                       const std::optional<scene::Mask>& before) const;
  bool hasMask(LayerChoice layer) const;

  /// A key of [scene], such as "frames", with a value as TOML has it, such as "120"; an empty value
  /// removes the entry.
  std::string withSceneKey(std::string_view key, std::string_view value) const;

  /// The files that it names, below the scene's folder or not: its input, and those of masks.
  std::vector<std::filesystem::path> files() const;
  /// The same files as seen from another folder; absolute names stay where they lead out of it.
  std::string withFilesFrom(const std::filesystem::path& folder) const;

  /// A scene without [[layer]] gets one that is what it was, and the new one above it.
  std::string withNewLayer(std::string_view name) const;
  std::string withoutLayer(std::size_t layer) const;
  std::string withLayerName(std::size_t layer, std::string_view name) const;
  /// The layer between those that `to` others lie below, as in a list from which it was taken.
  std::string withLayerMoved(std::size_t layer, std::size_t to) const;

 private:
  std::string withLayerOfItsOwn(std::string_view name) const;

  std::filesystem::path file_;
  std::shared_ptr<const TomlEdit> toml_;
};

}  // namespace desk
