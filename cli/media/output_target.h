// What kind of output a name asks for.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace cli {

enum class OutputFormat { Png, Exr, Mov, Mp4, Webm, Gif, Apng, Webp };

// What a .mov is filled with.
enum class MovCodec { Prores4444, Qtrle, Png };

struct OutputTarget {
  OutputFormat format;
  std::filesystem::path path;
  MovCodec codec = MovCodec::Prores4444;
  int startNumber = 0;  // of frame 0, in the names of numbered frames
  bool isNumbered = false;
  std::string comment = {};  // that a clip is to carry; empty for none

  bool isStandardOutput() const { return path == "-"; }
  // Each frame is a picture of its own, not part of a clip.
  bool holdsPictures() const { return format == OutputFormat::Png || format == OutputFormat::Exr; }
  bool isOnePicture() const { return holdsPictures() && !isNumbered && !isStandardOutput(); }
  bool isOnePng() const { return isOnePicture() && format == OutputFormat::Png; }

  // The file of one frame: the pattern's %d, %04d or #### replaced by its number.
  std::filesystem::path fileOf(int frame) const;

  // For messages.
  std::string name() const;
};

// The pattern's %d, %04d or last run of # replaced by the number; nothing when it has none.
std::optional<std::filesystem::path> numberedFile(const std::filesystem::path& pattern, int number);

// What the command line says about the output; empty where it says nothing.
struct OutputOptions {
  std::string name;
  std::string format;
  std::string codec;
  std::optional<int> startNumber;
  bool overwrite = false;
  bool skipExisting = false;
  std::string audio;  // a file to take the sound from
  bool noAudio = false;
};

// The names an output can have, for messages.
inline constexpr char kOutputNames[] =
    "name_%04d.png, name_%04d.exr, name.png, name.exr, name.mov, name.mp4, name.webm, name.gif, "
    "name.apng or name.webp";

// Chooses by extension, unless the options name the format. Throws UsageError naming what would be
// valid, also for what this kind of output cannot do.
OutputTarget parseOutputTarget(const OutputOptions& options);
OutputTarget parseOutputTarget(const std::string& name);  // no other options

}  // namespace cli
