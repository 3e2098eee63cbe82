#include "cli/media/output_target.h"

#include <unistd.h>

#include <map>

#include "cli/support/errors.h"
#include "scene/text/nearest_name.h"

namespace cli {
namespace {

struct NumberField {
  std::size_t start;
  std::size_t length;
  int digits;  // least number of digits
};

// Finds %d or %0Nd.
std::optional<NumberField> findPercentField(const std::string& name) {
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

// Or the last run of #, each of which stands for a digit.
std::optional<NumberField> findNumberField(const std::string& name) {
  if (const auto field = findPercentField(name)) return field;
  const std::size_t last = name.find_last_of('#');
  if (last == std::string::npos) return std::nullopt;
  const std::size_t before = name.find_last_not_of('#', last);
  const std::size_t start = before == std::string::npos ? 0 : before + 1;
  return NumberField{start, last + 1 - start, static_cast<int>(last + 1 - start)};
}

const std::map<std::string, OutputFormat> kFormats = {
    {"png", OutputFormat::Png},   {"exr", OutputFormat::Exr},   {"mov", OutputFormat::Mov},
    {"mp4", OutputFormat::Mp4},   {"webm", OutputFormat::Webm}, {"gif", OutputFormat::Gif},
    {"apng", OutputFormat::Apng}, {"webp", OutputFormat::Webp}};

const std::map<std::string, MovCodec> kCodecs = {
    {"prores4444", MovCodec::Prores4444}, {"qtrle", MovCodec::Qtrle}, {"png", MovCodec::Png}};

OutputFormat formatOf(const OutputOptions& options, const std::filesystem::path& path) {
  if (!options.format.empty()) return kFormats.at(options.format);
  if (path == "-") {
    throw UsageError("say with --format what to write to standard output, such as --format mov");
  }
  const std::string extension = scene::lowerCase(path.extension().string());
  const auto found = kFormats.find(extension.empty() ? extension : extension.substr(1));
  if (found == kFormats.end()) {
    throw UsageError("cannot tell from its name what to write into " + inQuotes(options.name) +
                     "; use " + kOutputNames);
  }
  return found->second;
}

bool isNumberedName(const OutputTarget& target) {
  const std::string file = target.path.filename().string();
  const bool hasPercent = file.find('%') != std::string::npos;
  if (!hasPercent && !(target.holdsPictures() && findNumberField(file))) return false;
  const auto field = findPercentField(file);
  const bool isPattern = field && file.find('%', field->start + field->length) == std::string::npos;
  if (hasPercent && !(target.holdsPictures() && isPattern)) {
    throw UsageError(inQuotes(target.path.string()) +
                     " is no usable pattern; numbered frames are written as name_%04d.png");
  }
  return true;
}

void checkStandardOutput(const OutputTarget& target) {
  if (target.format == OutputFormat::Apng) {
    throw UsageError("apng tells at its start how many frames follow, so it needs a file");
  }
  if (isatty(STDOUT_FILENO) == 1) {
    throw UsageError("standard output is a terminal; send it on to a program or into a file");
  }
}

}  // namespace

std::filesystem::path OutputTarget::fileOf(int frame) const {
  return isNumbered ? numberedFile(path, startNumber + frame).value() : path;
}

std::string OutputTarget::name() const {
  return isStandardOutput() ? "standard output" : inQuotes(path.string());
}

std::optional<std::filesystem::path> numberedFile(const std::filesystem::path& pattern,
                                                  int number) {
  std::string file = pattern.filename().string();
  const auto field = findNumberField(file);
  if (!field) return std::nullopt;
  std::string text = std::to_string(number);
  const std::size_t digits = static_cast<std::size_t>(field->digits);
  if (text.size() < digits) text.insert(0, digits - text.size(), '0');
  return pattern.parent_path() / file.replace(field->start, field->length, text);
}

OutputTarget parseOutputTarget(const OutputOptions& options) {
  OutputTarget target{formatOf(options, options.name), options.name};
  target.isNumbered = isNumberedName(target);
  if (!options.codec.empty()) {
    if (target.format != OutputFormat::Mov) {
      throw UsageError("--codec is for .mov clips, not for " + target.name());
    }
    const auto codec = kCodecs.find(options.codec);
    if (codec == kCodecs.end()) throw UsageError("there is no codec " + inQuotes(options.codec));
    target.codec = codec->second;
  }
  if (options.startNumber) {
    if (!target.isNumbered) {
      throw UsageError("--start-number is for numbered frames such as name_%04d.png, not for " +
                       target.name());
    }
    target.startNumber = *options.startNumber;
  }
  if (target.isStandardOutput()) checkStandardOutput(target);
  return target;
}

OutputTarget parseOutputTarget(const std::string& name) {
  OutputOptions options;
  options.name = name;
  return parseOutputTarget(options);
}

}  // namespace cli
