// What an input's name stands for: a file, numbered pictures, or what comes through a pipe.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "scene/frame_rate.h"

namespace cli {

struct MediaSource {
  std::string name;                      // as it was given, for messages
  std::string file;                      // as ffmpeg is to be told it
  std::vector<std::string> options;      // how ffmpeg is to open it
  bool isSequence = false;               // pictures without a rate of their own
  std::optional<long long> firstNumber;  // of numbered pictures to begin with any of
  std::string note;                      // what the user should know; or empty
  std::shared_ptr<const void> content;   // keeps open what `file` is, when that has no name
};

// Choices for inputs that can be read in more than one way.
struct InputChoices {
  bool still = false;           // a numbered picture is itself, not the first of a sequence
  bool tolerateDamage = false;  // keep what can be read; a gap repeats the picture before it
  bool keepFields = false;      // interlaced pictures stay as they are
  std::int64_t mostPixels = std::numeric_limits<int>::max();  // of a picture to be decoded
};

// Throws where a file must not be opened.
using FileCheck = std::function<void(const std::filesystem::path&)>;

// A picture or clip; "-" for standard input; numbered pictures as "f.%04d.png", "f.####.png",
// "f.*.png" or their first, "f.1001.png". What comes through a pipe is read to its end here, as a
// clip is looked at before it is decoded. Throws WorkError naming what is missing, or is no file.
// What somebody else than the user names comes with a check, and is no pipe.
MediaSource findSource(const std::filesystem::path& path, InputChoices choices = {},
                       const FileCheck& check = {});

// The path as ffmpeg is to be told it: always a local file, whatever colons or dashes it contains.
std::string mediaArgument(const std::filesystem::path& path);

// The same as a word of an ffconcat list. Throws WorkError where the path has a line break: what
// follows one would be a line of the list, and could name any file.
std::string wordOfList(const std::filesystem::path& path);

}  // namespace cli
