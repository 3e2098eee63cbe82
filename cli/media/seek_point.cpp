#include "cli/media/seek_point.h"

#include <algorithm>

#include "cli/media/ffprobe.h"
#include "cli/support/errors.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

// Behind the time of a key picture, however it was rounded, and before that of the next picture.
constexpr double kBehind = 0.0005;

double timeOf(const MediaInfo& info, const PictureTime& picture) {
  return static_cast<double>(picture.start) * info.tick;
}

// How many pictures to decode before the one that is needed. A filter may look at those beside it,
// and ffmpeg may look for the time at which a key picture is decoded, up to 16 pictures before it
// is shown.
int runUp(const MediaInfo& info) {
  return std::ranges::all_of(info.pictures, &PictureTime::isKey) ? 4 : 20;
}

// The last key picture from which the frame can be decoded; null where that is the first picture.
const PictureTime* keyBefore(const MediaInfo& info, scene::FrameRate rate, int frame) {
  // One frame earlier, since times are rounded to frames.
  const double needed = (frame - 1) / rate.perSecond() + info.fileStart - info.clockStart;
  const auto end = std::ranges::upper_bound(
      info.pictures, needed, {}, [&](const PictureTime& picture) { return timeOf(info, picture); });
  const auto count = end - info.pictures.begin() - runUp(info);
  for (auto i = count - 1; i > 0; --i) {
    const PictureTime& picture = info.pictures[static_cast<std::size_t>(i)];
    if (picture.isKey) return &picture;
  }
  return nullptr;
}

// Whether the container leads there or to an earlier key picture, and that needs no other: some
// streams are refreshed bit by bit, and what they call key is where that begins.
bool leadsTo(const MediaInfo& info, const PictureTime& key) {
  const std::vector<std::string> questions = {"-select_streams",
                                              "v:0",
                                              "-read_intervals",
                                              std::to_string(timeOf(info, key) + kBehind) + "%+#1",
                                              "-show_entries",
                                              "frame=pts,pict_type",
                                              "-of",
                                              "csv=p=0"};
  std::string answer;
  try {
    answer = askFfprobe(info.source, questions, "").text;
  } catch (const WorkError&) {
    return false;  // what is damaged may lie beyond the frames that are wanted
  }
  const std::size_t comma = answer.find(',');
  const auto start = scene::parseNumber(answer.substr(0, comma));
  return start && *start <= static_cast<double>(key.start) &&
         answer.substr(comma + 1).starts_with("I");
}

SeekPoint inSequence(const MediaInfo& info, int wanted) {
  const int frame = std::min(wanted, info.frameCount - 1);
  return {frame, {"-start_number", std::to_string(*info.source.firstNumber + frame)}};
}

SeekPoint inClip(const MediaInfo& info, scene::FrameRate rate, int wanted) {
  const double lastTime = timeOf(info, info.pictures.back()) - info.fileStart + info.clockStart;
  const int frame = std::min(wanted, static_cast<int>(lastTime * rate.perSecond()) - 1);
  const PictureTime* key = keyBefore(info, rate, frame);
  if (key == nullptr || !leadsTo(info, *key)) return {};
  // Pictures keep the times that they have without seeking.
  return {frame,
          {"-copyts", "-start_at_zero", "-noaccurate_seek", "-ss",
           std::to_string(timeOf(info, *key) - info.fileStart + kBehind)}};
}

}  // namespace

SeekPoint seekPointFor(const MediaInfo& info, scene::FrameRate rate, int wanted) {
  if (wanted > 0 && info.source.firstNumber) return inSequence(info, wanted);
  if (wanted > 0 && !info.pictures.empty()) return inClip(info, rate, wanted);
  return {};
}

}  // namespace cli
