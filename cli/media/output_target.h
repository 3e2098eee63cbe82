// What kind of output a name asks for, and whether it may be written.
#pragma once

#include <filesystem>
#include <string>

namespace cli {

// First and last frame, both rendered.
struct FrameRange {
  int first = 0;
  int last = 0;

  int count() const { return last - first + 1; }
};

// "A-B" or "A". Throws UsageError unless 0 <= A <= B.
FrameRange parseFrameRange(const std::string& text);

enum class OutputKind { kPngSequence, kSinglePng, kMov, kMp4, kGif, kApng, kWebp };

struct OutputTarget {
  OutputKind kind;
  std::filesystem::path path;

  // The file of one frame of a sequence: the pattern's %d or %04d replaced by the number.
  std::filesystem::path numbered(int frame) const;
};

// The names an output can have, for --help and for messages.
inline constexpr char kOutputNames[] =
    "name_%04d.png, name.png, name.mov, name.mp4, name.gif, name.apng or name.webp";

// Chooses by extension. Throws UsageError naming what would be valid.
OutputTarget parseOutputTarget(const std::string& name);

// Throws, before any work is done, when the range does not fit the kind of output (UsageError), or
// when the folder is missing or not writable or an output is there and overwrite is not asked for
// (WorkError).
void checkOutput(const OutputTarget& target, FrameRange range, bool overwrite);

// The part of checkOutput about one file.
void checkOutputFile(const std::filesystem::path& path, bool overwrite);

}  // namespace cli
