#include "cli/media/numbered_pictures.h"

#include <glob.h>

#include <algorithm>
#include <cctype>
#include <set>

#include "cli/support/errors.h"

namespace cli {
namespace {

constexpr std::string_view kDigits = "0123456789";

// A file name around its number.
struct NameParts {
  std::string prefix;
  std::string digits;
  std::string suffix;
};

// The number that ends the name before its extension, or nothing.
std::optional<NameParts> partsOf(const std::filesystem::path& file) {
  const std::string stem = file.stem().string();
  const std::size_t before = stem.find_last_not_of(kDigits);
  const std::size_t start = before == std::string::npos ? 0 : before + 1;
  // A number of 18 digits fits into 64 bits.
  if (start == stem.size() || stem.size() - start > 18) return std::nullopt;
  return NameParts{stem.substr(0, start), stem.substr(start), file.extension().string()};
}

// The names of one pattern: at least so many digits, filled with zeros in front, between the two.
struct NumberPattern {
  std::string prefix;
  std::size_t digits;
  std::string suffix;

  bool isNumber(std::string_view text) const {
    if (text.size() > 18 || text.find_first_not_of(kDigits) != text.npos) return false;
    return text.size() == digits || (text.size() > digits && text.front() != '0');
  }

  // For ffmpeg, which reads "%" elsewhere in the name only when it is doubled.
  std::string text(const std::filesystem::path& folder) const {
    std::string before = (folder / prefix).string();
    std::string after = suffix;
    for (std::string* part : {&before, &after}) {
      for (std::size_t at = part->find('%'); at != part->npos; at = part->find('%', at + 2)) {
        part->insert(at, 1, '%');
      }
    }
    return before + "%0" + std::to_string(digits) + "d" + after;
  }
};

// "f.%04d.png", "f.%d.png" or "f.####.png".
std::optional<NumberPattern> numberPatternOf(const std::string& name) {
  NumberPattern pattern{{}, 0, {}};
  const auto takes = [&](std::size_t start, std::size_t length, std::size_t digits) {
    pattern = {name.substr(0, start), digits, name.substr(start + length)};
    return pattern;
  };
  if (const std::size_t hash = name.find('#'); hash != name.npos) {
    const std::size_t end = std::min(name.find_first_not_of('#', hash), name.size());
    return takes(hash, end - hash, end - hash);
  }
  const std::size_t percent = name.find('%');
  if (percent == name.npos) return std::nullopt;
  const std::size_t end = name.find_first_not_of(kDigits, percent + 1);
  if (end == name.npos || name[end] != 'd') return std::nullopt;
  const std::string width = name.substr(percent + 1, end - percent - 1);
  if (width.size() > 2) return std::nullopt;
  const int digits = width.empty() ? 1 : std::max(1, std::stoi(width));
  return takes(percent, end + 1 - percent, static_cast<std::size_t>(digits));
}

NumberedPictures picturesNamed(const std::filesystem::path& folder, const NumberPattern& pattern) {
  NumberedPictures result;
  result.pattern = pattern.text(folder);
  std::error_code error;
  for (const auto& entry :
       std::filesystem::directory_iterator(folder.empty() ? "." : folder, error)) {
    const std::string name = entry.path().filename().string();
    if (name.size() <= pattern.prefix.size() + pattern.suffix.size() ||
        !name.starts_with(pattern.prefix) || !name.ends_with(pattern.suffix)) {
      continue;
    }
    const std::string number = name.substr(
        pattern.prefix.size(), name.size() - pattern.prefix.size() - pattern.suffix.size());
    if (!pattern.isNumber(number)) continue;
    result.pictures.push_back({folder / name, std::stoll(number), entry.is_regular_file(error)});
  }
  std::ranges::sort(result.pictures, {}, &NumberedPictures::Picture::number);
  return result;
}

// In the order of their names; numbered when they differ in nothing else.
NumberedPictures picturesMatching(const std::string& wildcards) {
  NumberedPictures result;
  glob_t found = {};
  if (glob(wildcards.c_str(), 0, nullptr, &found) == 0) {
    std::error_code error;
    for (std::size_t i = 0; i < found.gl_pathc; ++i) {
      const std::filesystem::path path = found.gl_pathv[i];
      if (std::filesystem::is_regular_file(path, error)) result.pictures.push_back({path});
    }
  }
  globfree(&found);
  if (result.pictures.empty()) return result;

  const std::filesystem::path folder = result.pictures.front().path.parent_path();
  const auto parts = partsOf(result.pictures.front().path.filename());
  if (!parts) return result;
  std::set<std::filesystem::path> meant;
  for (const NumberedPictures::Picture& picture : result.pictures) meant.insert(picture.path);
  for (const std::size_t digits : {parts->digits.size(), std::size_t{1}}) {
    const NumberPattern pattern{parts->prefix, digits, parts->suffix};
    NumberedPictures numbered = picturesNamed(folder, pattern);
    if (numbered.pictures.empty()) continue;
    const long long last = numbered.pictures.back().number;
    std::erase_if(numbered.pictures,
                  [&](const auto& picture) { return !meant.contains(picture.path); });
    if (numbered.pictures.size() != result.pictures.size()) continue;
    numbered.isCutShort = numbered.pictures.back().number < last;
    return numbered;
  }
  return result;
}

}  // namespace

bool NumberedPictures::isWhole() const {
  return pictures.back().number - pictures.front().number + 1 ==
         static_cast<long long>(pictures.size());
}

std::string NumberedPictures::missing() const {
  constexpr int kMostNamed = 6;
  std::string text;
  int named = 0;
  for (std::size_t i = 1; i < pictures.size(); ++i) {
    const long long first = pictures[i - 1].number + 1;
    const long long last = pictures[i].number - 1;
    if (last < first) continue;
    if (named++ == kMostNamed) return text + " and others";
    if (!text.empty()) text += ", ";
    text += std::to_string(first);
    if (last > first) text += "-" + std::to_string(last);
  }
  return text;
}

std::optional<NumberedPictures> picturesOfPattern(const std::filesystem::path& path) {
  std::optional<NumberedPictures> found;
  if (const auto pattern = numberPatternOf(path.filename().string())) {
    found = picturesNamed(path.parent_path(), *pattern);
  } else if (path.string().find_first_of("*?[") != std::string::npos) {
    found = picturesMatching(path.string());
  }
  return found;
}

std::optional<NumberedPictures> picturesFrom(const std::filesystem::path& first) {
  const auto parts = partsOf(first.filename());
  if (!parts || parts->digits.size() < 3) return std::nullopt;
  if (!parts->prefix.empty() && std::isalnum(static_cast<unsigned char>(parts->prefix.back()))) {
    return std::nullopt;
  }
  const NumberPattern pattern{parts->prefix, parts->digits.size(), parts->suffix};
  const long long number = std::stoll(parts->digits);
  NumberedPictures run = picturesNamed(first.parent_path(), pattern);
  std::erase_if(run.pictures, [number](const auto& picture) { return picture.number < number; });
  if (run.pictures.size() < 2 || run.pictures[1].number != number + 1 || !run.pictures[1].isFile) {
    return std::nullopt;
  }
  return run;
}

}  // namespace cli
