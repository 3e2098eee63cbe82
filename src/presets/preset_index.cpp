#include "presets/preset_index.h"

#include <cstdint>

#include "platform/whole_file.h"
#include "presets/text_reader.h"

namespace brisel {
namespace {

constexpr std::size_t kLongestText = 255;      // of paths, tokens and section lines
constexpr std::size_t kMostEntries = 100'000;  // of a section; what follows is left out

using Token = TextReader::Token;

/// Leaves the reader behind the header line of the section.
bool findSection(TextReader& reader, const std::string& name) {
  while (const auto first = reader.NextLine()) {
    if (*first != '[') continue;
    reader.ReadChars(1);
    const auto text = reader.ReadLineText();
    if (text && text->size() <= kLongestText && text->starts_with(name)) return true;
  }
  return false;
}

bool nextEntry(TextReader& reader) {
  const auto first = reader.NextLine();
  return first && *first != '[';
}

/// The full path of a file that the index names; empty when the name is empty or too long.
std::string pathOf(const std::string& folder, const Token& token) {
  const bool usable = token.status != TextReader::Status::Bracket && !token.text.empty() &&
                      token.text.size() <= kLongestText;
  if (!usable) return {};
  std::string path = folder + token.text;
  return path.size() <= kLongestText ? path : std::string();
}

PresetFiles filesOf(const std::string& folder, const Token& parameters, const Token& image) {
  PresetFiles files{pathOf(folder, parameters), {}};
  if (!files.parameters.empty()) files.thumbnail = pathOf(folder, image);
  return files;
}

std::vector<PresetFiles> readSection(TextReader& reader, const std::string& folder,
                                     const std::string& name) {
  if (!findSection(reader, name)) return {};
  const std::size_t start = reader.position();
  std::size_t count = 0;
  while (count < kMostEntries && nextEntry(reader)) ++count;
  std::vector<PresetFiles> entries(count);

  // Names are found across line ends, so that an entry with one name takes another one's and the
  // lines may run out before the entries do.
  reader.setPosition(start);
  for (std::size_t i = 0; i < count && nextEntry(reader); ++i) {
    const Token parameters = reader.ReadToken();
    const Token image = reader.ReadToken();
    entries[i] = filesOf(folder, parameters, image);
  }
  return entries;
}

}  // namespace

std::vector<PresetFiles> parsePresetIndex(std::span<const std::uint8_t> bytes,
                                          const std::string& presetFolder,
                                          const char* sectionName) {
  TextReader reader(bytes);
  return readSection(reader, presetFolder, sectionName);
}

std::vector<PresetFiles> ReadPresetIndex(const PresetFolders& folders, const char* sectionName) {
  const auto content = readWholeFile(folders.presetFilePath.c_str());
  if (!content) return {};
  return parsePresetIndex(content->bytes(), folders.presetFolder, sectionName);
}

}  // namespace brisel
