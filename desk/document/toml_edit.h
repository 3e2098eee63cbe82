// TOML edited where it stands: entries of tables set, added and removed, all else kept to the byte.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "scene/toml_parser.h"

namespace desk {

/// Offsets are bytes into the text. Edits return another text and leave this one as it is.
class TomlEdit {
 public:
  /// Throws scene::WorkError naming `file` and the line where the text is no TOML.
  TomlEdit(std::string text, const std::filesystem::path& file);
  TomlEdit(const TomlEdit&) = delete;  // the parser's tables lose their places when copied
  TomlEdit(TomlEdit&&) = default;
  TomlEdit& operator=(const TomlEdit&) = delete;
  TomlEdit& operator=(TomlEdit&&) = default;
  ~TomlEdit() = default;

  const std::string& text() const { return text_; }
  const toml::table& root() const { return root_; }

  /// A stretch of the text.
  struct Span {
    std::size_t begin;
    std::size_t end;
  };
  Span spanOf(const toml::node& node) const;
  std::string textOf(const toml::node& node) const;

  /// `key` is as written in the file, in quotes where it needs them. An entry that is there keeps
  /// its place, and its comment; a new one comes after the table's others.
  std::string withEntry(const toml::table& table, const std::string& key,
                        const std::string& value) const;
  /// The same with what takes the place of an array: elements that stay keep their lines.
  std::string withElements(const toml::array& array,
                           const std::vector<std::string>& elements) const;
  std::string withoutEntry(const toml::table& table, std::string_view name) const;

  /// From the table's header, with the comment right above it, to the end of the last line that is
  /// a part of the table.
  Span blockOf(const toml::table& table) const;
  /// Whether a table of its own stands there, below a header in brackets.
  bool hasHeader(const toml::table& table) const;

  std::string replaced(Span span, std::string_view with) const;
  /// Without those lines, and without one of the empty lines around them.
  std::string withoutLines(Span lines) const;
  /// Lines put there, at the start of a line, with an empty one between them and others.
  std::string withLinesAt(std::size_t offset, std::string_view lines) const;
  std::size_t offsetOf(toml::source_position position) const;
  /// Of the line's first byte, and of the next line's.
  std::size_t startOfLine(std::size_t offset) const;
  std::size_t endOfLine(std::size_t offset) const;

 private:
  std::size_t lastOffset(const toml::node& node) const;
  std::string insertedEntry(const toml::table& table, const std::string& entry) const;

  std::string text_;
  std::vector<std::size_t> lines_;  // where each begins
  toml::table root_;
};

}  // namespace desk
