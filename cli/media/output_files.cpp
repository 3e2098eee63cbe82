#include "cli/media/output_files.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/media/exr_writer.h"
#include "cli/media/png_writer.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

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

void checkFit(const OutputTarget& target, FrameRange range, Depth depth) {
  if (target.isOnePicture() && range.count() > 1) {
    throw UsageError(target.name() + " holds one frame, not " + std::to_string(range.count()) +
                     "; write name_%04d" + target.path.extension().string() +
                     " or choose one with --frames");
  }
  if (target.format == OutputFormat::Mov && target.codec == MovCodec::Qtrle &&
      depth == Depth::Bits16) {
    throw UsageError("--codec qtrle holds 8 bits per channel; use prores4444 or png for 16");
  }
}

// For an output that exists. A clip has its name only when it is complete, but another program may
// have copied only the beginning of a picture.
bool isComplete(const OutputTarget& target, const std::filesystem::path& file) {
  switch (target.format) {
    case OutputFormat::Png:
      return isCompletePng(file);
    case OutputFormat::Exr:
      return isCompleteExr(file);
    default:
      return true;
  }
}

}  // namespace

void checkOutputFile(const std::filesystem::path& path, bool overwrite) {
  checkFolder(path.has_parent_path() ? path.parent_path() : ".");
  const std::string name = "the output " + inQuotes(path.string());
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) return;
  if (std::filesystem::is_directory(status)) throw WorkError(name + " is a folder");
  // It would not be written into: a file would take its place.
  if (!std::filesystem::is_regular_file(status)) {
    throw WorkError(name +
                    " is a device or a pipe, not a file; \"brisel render -o -\" writes to one");
  }
  if (!overwrite) {
    throw WorkError(name + " exists already; give --overwrite to replace it");
  }
}

void checkThatItStays(const std::filesystem::path& read, const std::string& what,
                      const OutputTarget& target, const std::vector<int>& frames) {
  if (target.isStandardOutput()) return;
  for (const int frame : frames) {
    const std::filesystem::path file = target.fileOf(frame);
    std::error_code isNew;
    if (std::filesystem::equivalent(read, file, isNew)) {
      throw UsageError("the output " + inQuotes(file.string()) + " is the " + what +
                       " itself; give another name");
    }
    if (!target.isNumbered) return;
  }
}

std::vector<int> framesToWrite(const OutputTarget& target, FrameRange range, Depth depth,
                               const OutputOptions& options) {
  checkFit(target, range, depth);
  std::vector<int> frames;
  for (int frame = range.first; frame <= range.last; ++frame) {
    if (!target.isStandardOutput() && (target.holdsPictures() || frame == range.first)) {
      const std::filesystem::path file = target.fileOf(frame);
      checkOutputFile(file, options.overwrite || options.skipExisting);
      std::error_code error;
      if (options.skipExisting && std::filesystem::exists(file, error) &&
          isComplete(target, file)) {
        if (!target.holdsPictures()) return {};
        continue;
      }
    }
    frames.push_back(frame);
  }
  return frames;
}

}  // namespace cli
