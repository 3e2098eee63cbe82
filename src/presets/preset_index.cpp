#include "presets/preset_index.h"

#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include "platform/whole_file.h"
#include "presets/bmp_file.h"
#include "presets/text_reader.h"

namespace brisel {
namespace {

constexpr std::size_t kLongestText = 255;  // of paths, tokens and section lines

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

/// The full path of a file that the index names; empty when the name is none or too long.
std::string pathOf(const PresetFolders& folders, const Token& token) {
  const bool usable = token.status != TextReader::Status::Bracket && !token.text.empty() &&
                      token.text.size() <= kLongestText;
  if (!usable) return {};
  std::string path = folders.presetFolder + token.text;
  return path.size() <= kLongestText ? path : std::string();
}

void fillEntry(const PresetFolders& folders, const Token& parameterFile, const Token& image,
               Preset& preset) {
  const std::string path = pathOf(folders, parameterFile);
  if (path.empty()) return;
  std::memcpy(preset.path, path.c_str(), path.size() + 1);
  const std::string imagePath = pathOf(folders, image);
  if (imagePath.empty()) return;
  BmpImage thumbnail = LoadBmpFile(imagePath.c_str());
  preset.pixels = std::move(thumbnail.pixels);
  preset.width = thumbnail.width;
  preset.height = thumbnail.height;
  preset.rowBytes = thumbnail.width * 3;
}

void readSection(TextReader& reader, const PresetFolders& folders, const std::string& name,
                 PresetList& list) {
  if (!findSection(reader, name)) return;
  const std::size_t start = reader.position();
  std::int32_t count = 0;
  while (count < std::numeric_limits<std::int32_t>::max() && nextEntry(reader)) ++count;
  if (count == 0) return;
  list.items.reset(new (std::nothrow) Preset[static_cast<std::size_t>(count)]);
  if (list.items == nullptr) return;
  list.count = count;
  for (std::int32_t i = 0; i < count; ++i) list.items[static_cast<std::size_t>(i)].index = i;

  // Names are found across line ends, so that an entry with one name takes another one's and the
  // lines may run out before the entries do.
  reader.setPosition(start);
  for (std::int32_t i = 0; i < count && nextEntry(reader); ++i) {
    const Token parameterFile = reader.ReadToken();
    const Token image = reader.ReadToken();
    fillEntry(folders, parameterFile, image, list.items[static_cast<std::size_t>(i)]);
  }
}

}  // namespace

void ReadPresetIndex(const PresetFolders& folders, const char* sectionName, PresetList& list) {
  list.items.reset();
  list.count = 0;
  const auto content = readWholeFile(folders.presetFilePath);
  if (!content) return;
  TextReader reader(content->bytes());
  readSection(reader, folders, sectionName, list);
}

}  // namespace brisel
