#include "presets/parameter_file.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "platform/whole_file.h"
#include "presets/text_reader.h"

namespace brisel {
namespace {

/// The text of the lines with ";" that follow the first line.
std::string descriptionIn(std::span<const std::uint8_t> bytes) {
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const auto goToNextLine = [&rest] {
    const std::size_t end = rest.find('\n');
    rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
  };
  std::string description;
  for (goToNextLine(); rest.starts_with(';'); goToNextLine()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    const std::size_t start = line.find_first_not_of("; \t\r");
    if (start == line.npos) continue;
    if (!description.empty()) description += ' ';
    description += line.substr(start, line.find_last_not_of(" \t\r") + 1 - start);
  }
  return description;
}

/// The reader stands behind the header's line.
std::vector<FileParameter> readParameters(TextReader& reader, const NumberCount& numberCount) {
  std::vector<FileParameter> parameters;
  float number = 0.0f;
  do {
    auto label = reader.ReadLineText();
    if (!label) break;
    const int count = numberCount(*label);
    if (count == 0) continue;
    FileParameter& parameter = parameters.emplace_back();
    parameter.label = std::move(*label);
    for (int i = 0; i < count; ++i) {
      reader.SkipToNumber();  // skips one "]", where ReadNumber alone would stop
      reader.ReadNumber(number);
      parameter.numbers[static_cast<std::size_t>(i)] = number;
    }
  } while (reader.NextLine());
  return parameters;
}

}  // namespace

ParameterFile parseParameterFile(std::span<const std::uint8_t> bytes,
                                 const NumberCount& numberCount) {
  ParameterFile file;
  file.state = ParameterFile::State::OtherKind;
  TextReader reader(bytes);
  if (reader.ReadChars(kParameterFileHeader.size()) != kParameterFileHeader || !reader.NextLine()) {
    return file;
  }
  file.state = ParameterFile::State::Read;
  file.description = descriptionIn(bytes);
  file.parameters = readParameters(reader, numberCount);
  return file;
}

ParameterFile ReadParameterFile(const char* path, const NumberCount& numberCount) {
  const auto content = readWholeFile(path);
  return content ? parseParameterFile(content->bytes(), numberCount) : ParameterFile{};
}

}  // namespace brisel
