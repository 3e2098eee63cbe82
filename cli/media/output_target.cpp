#include "cli/media/output_target.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <optional>

#include "cli/support/errors.h"
#include "cli/support/nearest_name.h"
#include "cli/support/numbers.h"

namespace cli {
namespace {

struct NumberField {
  std::size_t start;
  std::size_t length;
  int digits;  // least number of digits
};

// Finds %d or %0Nd.
std::optional<NumberField> findNumberField(const std::string& name) {
  const std::size_t start = name.find('%');
  if (start == std::string::npos) return std::nullopt;
  std::size_t end = start + 1;
  int digits = 1;
  if (end + 1 < name.size() && name[end] == '0' && name[end + 1] >= '1' && name[end + 1] <= '9') {
    digits = name[end + 1] - '0';
    end += 2;
  }
  if (end >= name.size() || name[end] != 'd') return std::nullopt;
  return NumberField{start, end + 1 - start, digits};
}

OutputKind kindOf(const std::string& name, const std::string& extension) {
  static const std::map<std::string, OutputKind> kinds = {
      {".png", OutputKind::kSinglePng}, {".mov", OutputKind::kMov},   {".mp4", OutputKind::kMp4},
      {".gif", OutputKind::kGif},       {".apng", OutputKind::kApng}, {".webp", OutputKind::kWebp}};
  const auto found = kinds.find(lowerCase(extension));
  if (found == kinds.end()) {
    throw UsageError("cannot tell from its name what to write into " + inQuotes(name) + "; use " +
                     kOutputNames);
  }
  return found->second;
}

void checkFolder(const std::filesystem::path& folder) {
  std::error_code error;
  if (!std::filesystem::exists(folder, error)) {
    throw WorkError("the output folder " + inQuotes(folder.string()) + " does not exist");
  }
  if (!std::filesystem::is_directory(folder, error)) {
    throw WorkError(inQuotes(folder.string()) + " is not a folder to write into");
  }
  if (access(folder.c_str(), W_OK | X_OK) != 0) {
    throw WorkError("cannot write into the folder " + inQuotes(folder.string()) + ": " +
                    std::strerror(errno));
  }
}

}  // namespace

FrameRange parseFrameRange(const std::string& text) {
  const std::size_t dash = text.find('-', 1);
  const auto first = parseInteger(text.substr(0, dash));
  const auto last = dash == std::string::npos ? first : parseInteger(text.substr(dash + 1));
  if (!first || !last || *first < 0 || *last < *first) {
    throw UsageError("--frames " + inQuotes(text) +
                     ": a range is FIRST-LAST or one number, counted from 0, such as 0-99");
  }
  return {*first, *last};
}

std::filesystem::path OutputTarget::numbered(int frame) const {
  std::string name = path.filename().string();
  const auto field = findNumberField(name);
  if (!field) return path;
  std::string number = std::to_string(frame);
  const std::size_t digits = static_cast<std::size_t>(field->digits);
  if (number.size() < digits) number.insert(0, digits - number.size(), '0');
  return path.parent_path() / name.replace(field->start, field->length, number);
}

OutputTarget parseOutputTarget(const std::string& name) {
  const std::filesystem::path path(name);
  const std::string file = path.filename().string();
  OutputTarget target{kindOf(name, path.extension().string()), path};
  if (file.find('%') == std::string::npos) return target;
  const auto field = findNumberField(file);
  const bool isPattern = field && file.find('%', field->start + field->length) == std::string::npos;
  if (target.kind != OutputKind::kSinglePng || !isPattern) {
    throw UsageError(inQuotes(name) +
                     " is no usable pattern; numbered frames are written as name_%04d.png");
  }
  target.kind = OutputKind::kPngSequence;
  return target;
}

void checkOutputFile(const std::filesystem::path& path, bool overwrite) {
  checkFolder(path.has_parent_path() ? path.parent_path() : ".");
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    throw WorkError("the output " + inQuotes(path.string()) + " is a folder");
  }
  if (!overwrite && std::filesystem::exists(path, error)) {
    throw WorkError("the output " + inQuotes(path.string()) +
                    " exists already; give --overwrite to replace it");
  }
}

void checkOutput(const OutputTarget& target, FrameRange range, bool overwrite) {
  if (target.kind == OutputKind::kSinglePng && range.count() > 1) {
    throw UsageError(inQuotes(target.path.string()) + " holds one frame, not " +
                     std::to_string(range.count()) +
                     "; write name_%04d.png or choose one with --frames");
  }
  if (target.kind != OutputKind::kPngSequence) return checkOutputFile(target.path, overwrite);
  for (int frame = range.first; frame <= range.last; ++frame) {
    checkOutputFile(target.numbered(frame), overwrite);
  }
}

}  // namespace cli
