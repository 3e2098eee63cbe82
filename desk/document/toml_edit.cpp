#include "desk/document/toml_edit.h"

#include <algorithm>
#include <optional>

#include "scene/text/errors.h"
#include "scene/toml_reader.h"

namespace desk {
namespace {

bool isComment(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  return first != std::string_view::npos && line[first] == '#';
}

bool isBlank(std::string_view line) {
  return line.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

TomlEdit::TomlEdit(std::string text, const std::filesystem::path& file) : text_(std::move(text)) {
  root_ = scene::TomlReader(file, text_).parse();
  lines_.push_back(0);
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (text_[i] == '\n') lines_.push_back(i + 1);
  }
}

/// Columns count characters, of one byte or several.
std::size_t TomlEdit::offsetOf(toml::source_position position) const {
  std::size_t offset = lines_[std::min<std::size_t>(position.line, lines_.size()) - 1];
  for (toml::source_index column = 1; column < position.column && offset < text_.size(); ++column) {
    ++offset;
    while (offset < text_.size() && (static_cast<unsigned char>(text_[offset]) & 0xC0) == 0x80) {
      ++offset;
    }
  }
  return offset;
}

TomlEdit::Span TomlEdit::spanOf(const toml::node& node) const {
  return {offsetOf(node.source().begin), offsetOf(node.source().end)};
}

std::string TomlEdit::textOf(const toml::node& node) const {
  const Span span = spanOf(node);
  return text_.substr(span.begin, span.end - span.begin);
}

std::size_t TomlEdit::startOfLine(std::size_t offset) const {
  return *std::prev(std::ranges::upper_bound(lines_, offset));
}

std::size_t TomlEdit::endOfLine(std::size_t offset) const {
  const auto next = std::ranges::upper_bound(lines_, offset);
  return next == lines_.end() ? text_.size() : *next;
}

std::string TomlEdit::replaced(Span span, std::string_view with) const {
  std::string text = text_;
  return text.replace(span.begin, span.end - span.begin, with);
}

bool TomlEdit::hasHeader(const toml::table& table) const {
  return !table.is_inline() && text_[offsetOf(table.source().begin)] == '[';
}

/// The end of the last thing that belongs to the node.
std::size_t TomlEdit::lastOffset(const toml::node& node) const {
  std::size_t last = offsetOf(node.source().end);
  if (const toml::table* table = node.as_table(); table && !table->is_inline()) {
    for (const auto& [key, value] : *table) last = std::max(last, lastOffset(value));
  }
  return last;
}

TomlEdit::Span TomlEdit::blockOf(const toml::table& table) const {
  std::size_t begin = startOfLine(offsetOf(table.source().begin));
  while (begin > 0) {
    const std::size_t above = startOfLine(begin - 1);
    if (!isComment(std::string_view(text_).substr(above, begin - above))) break;
    begin = above;
  }
  return {begin, endOfLine(lastOffset(table))};
}

std::string TomlEdit::withoutLines(Span lines) const {
  const auto lineIsBlank = [this](std::size_t begin, std::size_t end) {
    return isBlank(std::string_view(text_).substr(begin, end - begin));
  };
  const std::size_t above = lines.begin > 0 ? startOfLine(lines.begin - 1) : 0;
  const bool followsBlank = lines.begin == 0 || lineIsBlank(above, lines.begin);
  if (followsBlank && lines.end < text_.size()) {
    const std::size_t below = endOfLine(lines.end);
    if (lineIsBlank(lines.end, below)) lines.end = below;
  } else if (followsBlank) {
    lines.begin = above;
  }
  return replaced(lines, "");
}

std::string TomlEdit::withLinesAt(std::size_t offset, std::string_view lines) const {
  std::string before = text_.substr(0, offset);
  std::string after = text_.substr(offset);
  if (!before.empty() && before.back() != '\n') before += '\n';
  const bool followsBlank =
      before.empty() || before == "\n" || before.ends_with("\n\n") || before.ends_with("\n\r\n");
  if (!followsBlank) before += '\n';
  if (!after.empty() && !isBlank(std::string_view(after).substr(0, after.find('\n')))) {
    after.insert(0, "\n");
  }
  return before.append(lines) + after;
}

std::string TomlEdit::withEntry(const toml::table& table, const std::string& key,
                                const std::string& value) const {
  std::string name = key;
  if (name.starts_with('"')) name = toml::parse("k = " + key)["k"].value_or(std::string());
  if (const toml::node* node = table.get(name)) return replaced(spanOf(*node), value);
  return insertedEntry(table, key + " = " + value);
}

std::string TomlEdit::insertedEntry(const toml::table& table, const std::string& entry) const {
  if (table.is_inline()) {
    const Span span = spanOf(table);
    std::optional<std::size_t> last;
    for (const auto& [key, value] : table) last = std::max(last.value_or(0), lastOffset(value));
    if (!last) return replaced(span, "{ " + entry + " }");
    return replaced({*last, *last}, ", " + entry);
  }
  // A table without a header is one of dotted keys, which all name it.
  const std::size_t head = offsetOf(table.source().begin);
  std::string prefix;
  if (!hasHeader(table)) {
    const std::size_t line = startOfLine(head);
    prefix = text_.substr(line, text_.find('.', offsetOf(table.source().end) - 1) + 1 - line);
  }
  std::size_t last = offsetOf(table.source().end);
  for (const auto& [key, value] : table) {
    const toml::table* inner = value.as_table();
    const toml::array* array = value.as_array();
    const bool isHeaded =
        (inner && hasHeader(*inner)) || (array && !array->empty() && array->front().is_table() &&
                                         hasHeader(*array->front().as_table()));
    if (isHeaded) continue;
    const std::size_t end = lastOffset(value);
    if (end <= last) continue;
    last = end;
    if (prefix.empty()) {
      const std::size_t line = startOfLine(offsetOf(key.source().begin));
      prefix = text_.substr(line, text_.find_first_not_of(" \t", line) - line);
    }
  }
  const std::size_t at = endOfLine(last);
  const bool endsOpen = at > 0 && text_[at - 1] != '\n';
  return replaced({at, at}, (endsOpen ? "\n" : "") + prefix + entry + "\n");
}

std::string TomlEdit::withElements(const toml::array& array,
                                   const std::vector<std::string>& elements) const {
  const Span span = spanOf(array);
  std::vector<std::string> old;
  for (const toml::node& node : array) old.push_back(textOf(node));
  const std::size_t shorter = std::min(old.size(), elements.size());
  std::size_t same = 0;
  while (same < shorter && old[same] == elements[same]) ++same;
  std::size_t sameAtEnd = 0;
  while (sameAtEnd < shorter - same &&
         old[old.size() - 1 - sameAtEnd] == elements[elements.size() - 1 - sameAtEnd]) {
    ++sameAtEnd;
  }
  const std::size_t oldEnd = old.size() - sameAtEnd;
  const std::size_t newEnd = elements.size() - sameAtEnd;
  const auto begin = [&](std::size_t i) { return spanOf(array[i]).begin; };
  const auto end = [&](std::size_t i) { return spanOf(array[i]).end; };

  // Elements on lines of their own keep having one each.
  std::string separator = ", ";
  if (old.size() > 1 && startOfLine(begin(1)) != startOfLine(begin(0))) {
    const std::size_t line = startOfLine(begin(1));
    separator = ",\n" + std::string(begin(1) - line, ' ');
  }
  std::string between;
  for (std::size_t i = same; i < newEnd; ++i) {
    between += (i > same ? separator : "") + elements[i];
  }
  if (old.empty() || elements.empty()) return replaced(span, "[ " + between + " ]");
  if (same == oldEnd && same == newEnd) return text_;
  if (same < oldEnd && same < newEnd) return replaced({begin(same), end(oldEnd - 1)}, between);
  if (same == oldEnd) {  // some are new
    if (same > 0) return replaced({end(same - 1), end(same - 1)}, separator + between);
    return replaced({begin(0), begin(0)}, between + separator);
  }
  if (same > 0) return replaced({end(same - 1), end(oldEnd - 1)}, "");
  return replaced({begin(0), begin(oldEnd)}, "");
}

std::string TomlEdit::withoutEntry(const toml::table& table, std::string_view name) const {
  const auto found = table.find(name);
  if (found == table.end()) return text_;
  const Span key{offsetOf(found->first.source().begin), offsetOf(found->first.source().end)};
  const std::size_t end = lastOffset(found->second);
  if (!table.is_inline()) return replaced({startOfLine(key.begin), endOfLine(end)}, "");
  std::optional<std::size_t> before;  // the end of the entry before it
  std::optional<std::size_t> after;   // the start of the one after it
  for (const auto& [otherKey, value] : table) {
    const std::size_t other = offsetOf(otherKey.source().begin);
    if (other < key.begin) before = std::max(before.value_or(0), lastOffset(value));
    if (other > key.begin) after = std::min(after.value_or(text_.size()), other);
  }
  if (before) return replaced({*before, end}, "");
  return replaced({key.begin, after.value_or(end)}, "");
}

}  // namespace desk
