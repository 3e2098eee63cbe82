#include "cli/media/clip_joining.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "cli/media/clip_encoding.h"
#include "cli/media/media_source.h"
#include "cli/support/child_process.h"
#include "cli/support/errors.h"
#include "cli/support/nameless_file.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

void checkNeighbors(const PartFile& one, const PartFile& next) {
  const std::string where =
      inQuotes(next.path.string()) + " starts at frame " + std::to_string(next.part.range.first) +
      ", but " + inQuotes(one.path.string()) + " ends at " + std::to_string(one.part.range.last);
  if (next.part.range.first > one.part.range.last + 1) {
    throw WorkError("frames are missing between two parts: " + where);
  }
  if (next.part.range.first <= one.part.range.last) throw WorkError("two parts overlap: " + where);
}

[[noreturn]] void refuse(const std::string& name, const PartFile& one, const std::string& value,
                         const PartFile& other, const std::string& otherValue) {
  const auto has = [](const PartFile& file, const std::string& text) {
    return inQuotes(file.path.string()) + " has " + (text.empty() ? "none" : text);
  };
  throw WorkError("the parts differ in their " + name + ": " + has(one, value) + ", but " +
                  has(other, otherValue));
}

void checkThatSettingsAgree(const PartFile& one, const PartFile& other) {
  const auto& settings = one.part.settings;
  const auto& others = other.part.settings;
  for (std::size_t i = 0; i < std::min(settings.size(), others.size()); ++i) {
    if (settings[i] == others[i]) continue;
    refuse(settings[i].first, one, settings[i].second, other, others[i].second);
  }
  if (one.part.frames != other.part.frames) {
    refuse("scene's number of frames", one, std::to_string(one.part.frames), other,
           std::to_string(other.part.frames));
  }
  if (one.part.rate != other.part.rate) {
    refuse("frame rate", one, one.part.rate.text(), other, other.part.rate.text());
  }
  if (one.part.sound != other.part.sound) {
    refuse("sound", one, one.part.sound, other, other.part.sound);
  }
  if (settings.size() != others.size() || one.sharedHeader != other.sharedHeader) {
    refuse("encoder, which has another version or other settings", one, one.sharedHeader, other,
           other.sharedHeader);
  }
}

// Each with its exact length: that which containers tell is rounded. What is rounded here does not
// add up over many parts.
std::string listOf(const std::vector<PartFile>& parts) {
  const ClipPart& first = parts.front().part;
  const auto microseconds = [&](int frame) {
    return std::llround(1e6 * (frame - first.range.first) / first.rate.perSecond());
  };
  std::string list = "ffconcat version 1.0\n";
  for (const PartFile& file : parts) {
    const long long length =
        microseconds(file.part.range.last + 1) - microseconds(file.part.range.first);
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%lld.%06lld", length / 1'000'000, length % 1'000'000);
    list += "file " + wordOfList(file.path) + "\nduration " + seconds + "\n";
  }
  return list;
}

}  // namespace

FrameRange sortAndCheckParts(std::vector<PartFile>& parts) {
  std::ranges::sort(parts, {}, [](const PartFile& file) { return file.part.range.first; });
  for (std::size_t i = 1; i < parts.size(); ++i) {
    checkThatSettingsAgree(parts.front(), parts[i]);
    checkNeighbors(parts[i - 1], parts[i]);
  }
  return {parts.front().part.range.first, parts.back().part.range.last};
}

void joinParts(const std::vector<PartFile>& parts, const OutputTarget& output,
               const std::optional<Soundtrack>& sound) {
  NamelessFile list;
  list.append(listOf(parts));
  TemporaryFile temporary(output.path);
  ChildProcess ffmpeg(
      joinCommand(output, list.path(), temporary.path(), parts.front().part.rate, sound),
      ChildProcess::Pipe::ToItsInput);
  const auto fail = [&](const std::string& why) {
    throw WorkError("cannot write " + output.name() + ": " + why);
  };
  const bool worked = ffmpeg.finish();
  const std::string complaint = ffmpeg.firstComplaint();
  if (!worked || !complaint.empty()) fail(complaint.empty() ? "ffmpeg gave up" : complaint);

  const int frames = parts.back().part.range.last - parts.front().part.range.first + 1;
  const int pictures = picturesIn(temporary.path(), output.path.string());
  if (pictures != frames) {
    fail("of " + std::to_string(frames) + " frames " + std::to_string(pictures) + " came through");
  }
  temporary.commit();
}

}  // namespace cli
