#include "cli/media/media_source.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "cli/media/ffprobe.h"
#include "cli/media/numbered_pictures.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"
#include "cli/support/nameless_file.h"
#include "scene/text/nearest_name.h"

namespace cli {
namespace {

// Numbers left out of numbered pictures, for each of which ffmpeg opens the picture before it
// again.
constexpr long long kMostInGaps = 5000;

void checkThatItHoldsSomething(const std::string& name, std::uintmax_t size) {
  if (size == 0) throw WorkError("the input " + inQuotes(name) + " is empty");
}

// One that is opened twice would wait for a second writer, or start in the middle.
MediaSource spooled(MediaSource source, FileDescriptor pipe) {
  const auto content = std::make_shared<NamelessFile>();
  std::array<char, 1 << 16> buffer;
  std::uintmax_t size = 0;
  for (;;) {
    const ssize_t count = read(pipe.get(), buffer.data(), buffer.size());
    if (count == 0) break;
    if (count > 0) {
      content->append({buffer.data(), static_cast<std::size_t>(count)});
      size += static_cast<std::uintmax_t>(count);
    } else if (errno == EINTR) {
      throwIfInterrupted();
    } else {
      throw WorkError("cannot read the input " + inQuotes(source.name) + ": " +
                      std::strerror(errno));
    }
  }
  checkThatItHoldsSomething(source.name, size);
  source.file = mediaArgument(content->path());
  source.content = content;
  return source;
}

FileDescriptor openPipe(const std::string& name) {
  for (;;) {
    FileDescriptor pipe(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (pipe.isOpen()) return pipe;
    if (errno != EINTR) {
      throw WorkError("cannot read the input " + inQuotes(name) + ": " + std::strerror(errno));
    }
    throwIfInterrupted();
  }
}

// A list of pictures for the formats' own sequence reader to skip: that one stops at gaps. The
// picture before a gap appears again for each number left out.
std::string pictureList(const NumberedPictures& sequence) {
  std::string list = "ffconcat version 1.0\n";
  const auto& pictures = sequence.pictures;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const bool isLast = i + 1 == pictures.size();
    const long long times =
        sequence.pattern.empty() || isLast ? 1 : pictures[i + 1].number - pictures[i].number;
    // Or any of them could be another list, or its name a pattern of others.
    const std::string entry = "file " + wordOfList(pictures[i].path) +
                              "\noption format_whitelist " + kStillFormats +
                              "\noption pattern_type none\nduration 0.04\n";
    for (long long k = 0; k < times; ++k) list += entry;
  }
  return list;
}

// The format is known, or must be one of the usual ones.
void setOptions(MediaSource& source, const InputChoices& choices, const std::string& format = {},
                const std::vector<std::string>& ofFormat = {}) {
  source.options = openingOptions(format.empty() ? selfContainedFormats() : format);
  source.options.insert(source.options.end(), {"-max_pixels", std::to_string(choices.mostPixels)});
  if (!format.empty()) source.options.insert(source.options.end(), {"-f", format});
  source.options.insert(source.options.end(), ofFormat.begin(), ofFormat.end());
}

// ffmpeg takes such a name of a picture for a pattern of others.
bool looksLikePattern(const std::string& name) {
  return name.find_first_of("%*?[]{}") != name.npos;
}

// ffmpeg would open the other two planes of one by their names.
void checkThatItIsWhole(const std::string& name, const std::filesystem::path& picture) {
  if (scene::lowerCase(picture.extension().string()) != ".y") return;
  throw WorkError("the input " + inQuotes(name) +
                  " is one plane of a picture, of which the others are other files; give a picture "
                  "that is one file");
}

void checkSequence(const std::string& name, const NumberedPictures& sequence) {
  for (const NumberedPictures::Picture& picture : sequence.pictures) {
    checkThatItIsWhole(name, picture.path);
    if (picture.isFile) continue;
    throw WorkError(inQuotes(picture.path.string()) + ", of the input " + inQuotes(name) +
                    ", is a folder, a device or a pipe, or a link to no file; rename or remove it");
  }
  if (sequence.pictures.back().number > std::numeric_limits<int>::max()) {
    throw WorkError("the numbers of the input " + inQuotes(name) + " lead above " +
                    std::to_string(std::numeric_limits<int>::max()) +
                    ", the greatest that is read");
  }
}

MediaSource sourceOf(MediaSource source, const NumberedPictures& sequence,
                     const InputChoices& choices) {
  checkSequence(source.name, sequence);
  source.isSequence = true;
  const bool isNumbered = !sequence.pattern.empty();
  // Its own reader goes on to greater numbers by itself.
  if (isNumbered && sequence.isWhole() && !sequence.isCutShort) {
    const long long first = sequence.pictures.front().number;
    if (!choices.tolerateDamage) source.firstNumber = first;
    setOptions(source, choices, "image2",
               {"-pattern_type", "sequence", "-start_number", std::to_string(first)});
    source.file = mediaArgument(sequence.pattern);
    return source;
  }
  if (isNumbered && !sequence.isWhole()) {
    const long long numbers = sequence.pictures.back().number - sequence.pictures.front().number;
    const long long gaps = numbers + 1 - std::ssize(sequence.pictures);
    if (gaps > kMostInGaps) {
      throw WorkError("the input " + inQuotes(source.name) + " lacks " + std::to_string(gaps) +
                      " numbers, and " + std::to_string(kMostInGaps) + " at most are bridged");
    }
    source.note =
        "the input " + inQuotes(source.name) + " lacks the numbers " + sequence.missing() + "; ";
    if (!choices.tolerateDamage) {
      throw WorkError(source.note + "with --tolerate-damage the picture before a gap holds");
    }
    source.note += "the picture before a gap holds";
  }
  const auto content = std::make_shared<NamelessFile>();
  content->append(pictureList(sequence));
  setOptions(source, choices, "concat", {"-safe", "0"});
  source.file = mediaArgument(content->path());
  source.content = content;
  return source;
}

// The folder has been checked.
void checkPictures(const NumberedPictures& sequence, const std::filesystem::path& folder,
                   const FileCheck& check) {
  if (!check) return;
  for (const NumberedPictures::Picture& picture : sequence.pictures) {
    if (picture.path.parent_path() != folder || std::filesystem::is_symlink(picture.path)) {
      check(picture.path);
    }
  }
}

}  // namespace

std::string mediaArgument(const std::filesystem::path& path) {
  return "file:" + path.string();
}

std::string wordOfList(const std::filesystem::path& path) {
  std::string word = mediaArgument(std::filesystem::absolute(path));
  if (word.find_first_of("\r\n") != word.npos) {
    throw WorkError("files with a line break in their path cannot be put together; rename them");
  }
  for (std::size_t at = word.find('\''); at != word.npos; at = word.find('\'', at + 4)) {
    word.replace(at, 1, "'\\''");
  }
  return "'" + word + "'";
}

MediaSource findSource(const std::filesystem::path& path, InputChoices choices,
                       const FileCheck& check) {
  if (check) check(path);
  MediaSource source;
  source.name = path.string();
  source.file = mediaArgument(path);
  setOptions(source, choices);
  if (source.name == "-") {
    if (isatty(STDIN_FILENO)) {
      throw WorkError(
          "the input \"-\" is standard input, which is a terminal; send a clip into it");
    }
    return spooled(std::move(source), FileDescriptor(dup(STDIN_FILENO)));
  }
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) {
    if (const auto sequence = picturesOfPattern(path)) {
      if (sequence->pictures.empty()) {
        throw WorkError("no file is named as the input " + inQuotes(source.name) + " says");
      }
      checkPictures(*sequence, path.parent_path(), check);
      return sourceOf(std::move(source), *sequence, choices);
    }
    throw WorkError("the input " + inQuotes(source.name) + " does not exist");
  }
  if (std::filesystem::is_directory(status)) {
    throw WorkError("the input " + inQuotes(source.name) + " is a folder, not a picture or clip");
  }
  const bool isPipe = std::filesystem::is_fifo(status);
  if (!std::filesystem::is_regular_file(status) && (!isPipe || check)) {
    throw WorkError("the input " + inQuotes(source.name) + " is a " +
                    (isPipe ? "pipe; give it with -i" : "device, not a picture or clip"));
  }
  if (isPipe) {
    FileDescriptor pipe = openPipe(source.name);
    return spooled(std::move(source), std::move(pipe));
  }
  checkThatItHoldsSomething(source.name, std::filesystem::file_size(path));
  if (!choices.still) {
    if (const auto sequence = picturesFrom(path)) {
      source.note = inQuotes(source.name) + " is taken as the first of " +
                    std::to_string(sequence->pictures.size()) +
                    " numbered pictures; --still takes it alone";
      checkPictures(*sequence, path.parent_path(), check);
      return sourceOf(std::move(source), *sequence, choices);
    }
  }
  checkThatItIsWhole(source.name, path);
  if (looksLikePattern(source.name)) {
    const auto file = std::make_shared<FileDescriptor>(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    source.file = mediaArgument(file->path());
    source.content = file;
  }
  return source;
}

}  // namespace cli
