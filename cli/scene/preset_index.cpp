#include "cli/scene/preset_index.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>

namespace cli {
namespace {

constexpr unsigned char kSpace = 32;
constexpr unsigned char kLastLineEnd = 13;

// Reads as the module does, so that both count the same cells.
class IndexReader {
 public:
  explicit IndexReader(std::string text) : text_(std::move(text)) {}

  // Goes to the next line that is no comment and returns its first character.
  std::optional<char> nextLine() {
    for (;;) {
      at_ = text_.find_first_of("\r\n", at_);
      if (at_ != std::string::npos) at_ = text_.find_first_not_of("\r\n", at_);
      if (at_ == std::string::npos) return std::nullopt;
      if (text_[at_] != ';') return text_[at_];
    }
  }

  // Goes behind the header of the section.
  bool findSection(std::string_view name) {
    while (const auto first = nextLine()) {
      if (*first != '[') continue;
      ++at_;
      if (lineText().starts_with(name)) return true;
    }
    return false;
  }

  bool nextEntry() {
    const auto first = nextLine();
    return first && *first != '[';
  }

  // Nothing at the end and when there is a bracket.
  std::optional<std::string> token() {
    while (at_ < text_.size() && byte() <= kSpace) ++at_;
    const std::size_t start = at_;
    while (at_ < text_.size() && byte() > kSpace && byte() != ']') ++at_;
    const std::size_t end = at_;
    const bool bracket = end < text_.size() && byte() == ']';
    if (end < text_.size()) ++at_;
    if (bracket || start == end) return std::nullopt;
    return text_.substr(start, end - start);
  }

  std::size_t position() const { return at_; }
  void setPosition(std::size_t at) { at_ = at; }

 private:
  unsigned char byte() const { return static_cast<unsigned char>(text_[at_]); }

  std::string lineText() {
    const std::size_t start = at_;
    while (at_ < text_.size() && byte() > kLastLineEnd) ++at_;
    const std::size_t end = at_;
    if (end < text_.size()) ++at_;
    return text_.substr(start, end - start);
  }

  std::string text_;
  std::size_t at_ = 0;
};

// What is named like a full path lies there too.
std::filesystem::path besideIndex(const PresetIndex& index, const std::string& file) {
  return index.file.parent_path().string() + "/" + file;
}

void readRow(IndexReader& reader, std::size_t row, PresetIndex& index) {
  if (!reader.findSection(kPresetRows[row].section)) return;
  const std::size_t start = reader.position();
  int& cells = index.cells[row];
  while (reader.nextEntry()) ++cells;

  reader.setPosition(start);
  for (int cell = 0; cell < cells && reader.nextEntry(); ++cell) {
    const auto file = reader.token();
    const auto thumbnail = reader.token();
    if (!file) continue;
    const std::string name = std::filesystem::path(*file).replace_extension().string();
    index.presets.push_back({row, cell, name, besideIndex(index, *file),
                             thumbnail ? besideIndex(index, *thumbnail) : std::filesystem::path()});
  }
}

}  // namespace

std::string presetDescription(const Preset& preset) {
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(preset.file, unknown)) return "";
  std::ifstream stream(preset.file, std::ios::binary);
  std::string description;
  std::string line;
  std::getline(stream, line);  // the title
  while (std::getline(stream, line) && line.starts_with(';')) {
    const std::size_t start = line.find_first_not_of("; \t\r");
    if (start == std::string::npos) continue;
    if (!description.empty()) description += ' ';
    description += line.substr(start, line.find_last_not_of(" \t\r") + 1 - start);
  }
  return description;
}

PresetIndex readPresetIndex(const std::filesystem::path& module) {
  // The module, too, looks beside the file that a link leads to.
  const auto folder = std::filesystem::canonical(module).parent_path();
  PresetIndex index{folder / "Corvane" / "Drizzen" / "Drizzen.prs", {}};
  std::error_code unknown;  // then it is no ordinary file, and the module reads none but those
  if (!std::filesystem::is_regular_file(index.file, unknown)) return index;
  std::ifstream stream(index.file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  for (std::size_t row = 0; row < kPresetRows.size(); ++row) {
    IndexReader reader(text);
    readRow(reader, row, index);
  }
  return index;
}

}  // namespace cli
