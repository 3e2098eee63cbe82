// The presets that scenes name, by the names people use, and what they set.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "effect/values.h"
#include "presets/parameter_file.h"
#include "presets/preset_index.h"
#include "scene/origin.h"

namespace scene {

/// One row of thumbnails in the effect controls.
struct PresetRow {
  const char* section;  // of the index file
  const char* control;  // label of the control that shows it
};
inline constexpr std::array<PresetRow, 2> kPresetRows{
    {{brisel::kEmitterSection, "Emmiter presets"}, {brisel::kStarSection, "Stars presets"}}};

struct Preset {
  std::size_t row;  // of kPresetRows
  std::string name;
  std::filesystem::path file;
  std::filesystem::path thumbnail;
};

/// One name of a scene's presets, or of an option.
struct PresetChoice {
  std::string name;
  std::string place;  // where it was written, for messages: "fire.toml:12"
  Origin origin = Origin::Scene;
};

/// All bytes of a file; nothing when there is none or it cannot be read.
using ReadFile =
    std::function<std::optional<std::vector<std::uint8_t>>(const std::filesystem::path& file)>;

/// Of the file system.
std::optional<std::vector<std::uint8_t>> readFileOfSystem(const std::filesystem::path& file);

class PresetLibrary {
 public:
  /// Those that the index "Drizzen.prs" in that folder lists, row by row; none when it cannot be
  /// read. Files are read when they are asked for, and only below that folder.
  explicit PresetLibrary(const std::filesystem::path& folder);
  /// The same by a `read` of a program that carries its presets: it gets the folder, which may be
  /// empty, with a name of a file.
  PresetLibrary(const std::filesystem::path& folder, ReadFile read);

  const std::filesystem::path& index() const { return index_; }
  const std::vector<Preset>& presets() const { return presets_; }

  /// By name, or by the name of its file. Throws WorkError, or UsageError for an option, naming the
  /// nearest preset when there is none of that name.
  const Preset& find(const PresetChoice& choice) const;

  /// What the first comment of the preset's file says, in one line; empty when it says nothing.
  std::string describe(const Preset& preset) const;

  /// Gives `values` what the preset sets, and returns which parameters these are; points are
  /// fractions of `frame`. Throws WorkError naming what is wrong with the preset's file.
  std::vector<brisel::ParamIndex> apply(const Preset& preset, brisel::FrameSize frame,
                                        brisel::Values& values) const;

 private:
  brisel::ParameterFile fileOf(const Preset& preset) const;

  std::filesystem::path index_;
  ReadFile read_;
  std::vector<Preset> presets_;
};

}  // namespace scene
