// TOML files, read with complaints that name the file, the line and the key.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "scene/animation.h"
#include "scene/toml_parser.h"

namespace scene {

struct TomlEntry {
  std::string key;
  const toml::node* node;
};

/// The table's entries as they stand in the file; the parser sorts them by name.
std::vector<TomlEntry> inFileOrder(const toml::table& table);

/// Everything here throws WorkError when the file does not hold what is asked for.
class TomlReader {
 public:
  explicit TomlReader(std::filesystem::path file) : file_(std::move(file)) {}
  /// Of a text that the file is to hold, and may not hold yet.
  TomlReader(std::filesystem::path file, std::string text)
      : file_(std::move(file)), text_(std::move(text)) {}

  const std::filesystem::path& file() const { return file_; }
  toml::table parse() const;

  const toml::table& tableOf(const TomlEntry& entry) const;
  /// One of two choices, or any text when there are none.
  std::string textOf(const TomlEntry& entry, const std::vector<std::string>& choices = {}) const;
  std::vector<std::string> textsOf(const TomlEntry& entry) const;
  bool flagOf(const TomlEntry& entry) const;
  int integerOf(const TomlEntry& entry, int least, int greatest) const;
  UserValue valueOf(const TomlEntry& entry) const;
  /// A value, or a list of keyframes, whose times may be seconds.
  std::vector<Setting::Key> keysOf(const TomlEntry& entry) const;

  std::string placeOf(const toml::node& node) const;  // "fire.toml:12"
  [[noreturn]] void fail(const toml::node& node, const std::string& what) const;
  [[noreturn]] void unknownKey(const TomlEntry& entry, const std::string& kind,
                               const std::vector<std::string>& known) const;

 private:
  std::vector<Setting::Key> keyframesOf(const TomlEntry& entry, const toml::array& array) const;
  void setTime(Keyframe& key, const std::string& label, const toml::node& node) const;
  Ease easeOf(const std::string& label, const toml::node& node) const;
  double finiteOf(const std::string& key, const toml::node& node) const;

  std::filesystem::path file_;
  std::optional<std::string> text_;
};

}  // namespace scene
