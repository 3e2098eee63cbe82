#include "scene/preset_library.h"

#include <algorithm>
#include <utility>

#include "effect/presets.h"
#include "platform/whole_file.h"
#include "scene/file_access.h"
#include "scene/text/nearest_name.h"

namespace scene {
namespace {

using brisel::ParameterFile;

// What is wrong with a file, as the end of a sentence that begins with its name; empty when nothing
// is.
std::string faultOf(const ParameterFile& file) {
  switch (file.state) {
    case ParameterFile::State::Missing:
      return " is missing, too large or cannot be read, or lies outside the folder of the presets";
    case ParameterFile::State::OtherKind:
      return " is no parameter file: it does not begin with \"" +
             std::string(brisel::kParameterFileHeader) + "\", or ends there";
    default:
      return "";
  }
}

[[noreturn]] void reject(const PresetChoice& choice, const std::string& what) {
  reject(choice.origin, choice.place + ": " + what);
}

}  // namespace

std::optional<std::vector<std::uint8_t>> readFileOfSystem(const std::filesystem::path& file) {
  const auto content = brisel::readWholeFile(file.string().c_str());
  if (!content) return std::nullopt;
  const auto bytes = content->bytes();
  return std::vector(bytes.begin(), bytes.end());
}

PresetLibrary::PresetLibrary(const std::filesystem::path& folder)
    : PresetLibrary(folder, [folder](const std::filesystem::path& file) {
        return liesBelow(file, folder) ? readFileOfSystem(file) : std::nullopt;
      }) {}

PresetLibrary::PresetLibrary(const std::filesystem::path& folder, ReadFile read)
    : index_(folder / "Drizzen.prs"), read_(std::move(read)) {
  const auto bytes = read_(index_);
  if (!bytes) return;
  const std::string prefix = (folder / "").string();
  for (std::size_t row = 0; row < kPresetRows.size(); ++row) {
    for (const auto& files : brisel::parsePresetIndex(*bytes, prefix, kPresetRows[row].section)) {
      if (files.parameters.empty()) continue;
      std::filesystem::path name = files.parameters.substr(prefix.size());
      presets_.push_back(
          {row, name.replace_extension().string(), files.parameters, files.thumbnail});
    }
  }
}

const Preset& PresetLibrary::find(const PresetChoice& choice) const {
  const auto isMeant = [&](const Preset& preset) {
    return preset.name == choice.name || preset.file.filename() == choice.name;
  };
  const auto found = std::ranges::find_if(presets_, isMeant);
  if (found != presets_.end()) {
    const auto second = std::find_if(found + 1, presets_.end(), isMeant);
    if (second == presets_.end() || second->file == found->file) return *found;
    reject(choice, inQuotes(choice.name) + " may be " + inQuotes(found->file.string()) + " or " +
                       inQuotes(second->file.string()));
  }
  if (presets_.empty()) {
    reject(choice, "there are no presets, as " + inQuotes(index_.string()) +
                       " does not exist or lists none");
  }
  std::vector<std::string> names;
  for (const Preset& preset : presets_) names.push_back(preset.name);
  reject(choice, "there is no preset " + inQuotes(choice.name) + orNearest(choice.name, names));
}

std::string PresetLibrary::describe(const Preset& preset) const {
  return fileOf(preset).description;
}

std::vector<brisel::ParamIndex> PresetLibrary::apply(const Preset& preset, brisel::FrameSize frame,
                                                     brisel::Values& values) const {
  const ParameterFile file = fileOf(preset);
  if (const std::string fault = faultOf(file); !fault.empty()) {
    throw WorkError("the effect does not take the preset " + inQuotes(preset.name) + ": " +
                    inQuotes(preset.file.string()) + fault);
  }
  return brisel::applyParameters(file, frame, values);
}

ParameterFile PresetLibrary::fileOf(const Preset& preset) const {
  const auto bytes = read_(preset.file);
  return bytes ? brisel::parseParameterFile(*bytes, brisel::numberCountOf) : ParameterFile{};
}

}  // namespace scene
