#include "cli/farm/chunks.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "cli/media/clip_part.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

// Sums up to each frame, so that any range costs one subtraction.
class CostSums {
 public:
  explicit CostSums(const FrameCosts& costs)
      : start_(costs.startUp + costs.preroll),
        steps_(sums(costs.steps)),
        draws_(sums(costs.draws)) {}

  double of(FrameRange chunk) const {
    const auto first = static_cast<std::size_t>(chunk.first);
    return start_ + steps_[first] + draws_[static_cast<std::size_t>(chunk.last) + 1] -
           draws_[first];
  }

 private:
  static std::vector<double> sums(const std::vector<double>& values) {
    std::vector<double> sums = {0};
    for (const double value : values) sums.push_back(sums.back() + value);
    return sums;
  }

  double start_;
  std::vector<double> steps_;
  std::vector<double> draws_;
};

// The last frame that a chunk from `first` on may have; `first` itself when even that costs more.
int lastWithin(double bound, int first, int last, const CostSums& costs) {
  int fits = first;
  while (fits < last) {
    const int middle = fits + (last - fits + 1) / 2;
    if (costs.of({first, middle}) <= bound) {
      fits = middle;
    } else {
      last = middle - 1;
    }
  }
  return fits;
}

// Each as long as the bound allows: a step costs no more than a drawn frame, so that the rest never
// gets dearer by starting later.
std::vector<Chunk> chunksWithin(double bound, FrameRange range, const CostSums& costs) {
  std::vector<Chunk> chunks;
  for (int first = range.first; first <= range.last; first = chunks.back().range.last + 1) {
    const FrameRange chunk{first, lastWithin(bound, first, range.last, costs)};
    chunks.push_back({chunk, costs.of(chunk)});
  }
  return chunks;
}

// Where the steps to the last frames cost as much as other chunks, fewer would be as quick. More do
// no harm, and save work when one of them fails.
void splitUpTo(std::size_t count, std::vector<Chunk>& chunks, const CostSums& costs) {
  while (chunks.size() < count) {
    const auto dearest = std::ranges::max_element(chunks, {}, [](const Chunk& chunk) {
      return chunk.range.count() > 1 ? chunk.seconds : 0.0;
    });
    const FrameRange whole = dearest->range;
    const int middle = whole.first + (whole.count() - 1) / 2;
    const FrameRange start{whole.first, middle};
    const FrameRange rest{middle + 1, whole.last};
    *dearest = {start, costs.of(start)};
    chunks.insert(dearest + 1, {rest, costs.of(rest)});
  }
}

}  // namespace

std::vector<Chunk> balancedChunks(FrameRange range, int count, const FrameCosts& costs) {
  const CostSums sums(costs);
  const auto wanted = static_cast<std::size_t>(std::min(count, range.count()));
  double enough = sums.of(range);
  double tooLittle = 0;
  for (int i = 0; i < 60; ++i) {
    const double bound = (enough + tooLittle) / 2;
    const std::vector<Chunk> chunks = chunksWithin(bound, range, sums);
    const bool fits =
        chunks.size() <= wanted &&
        std::ranges::all_of(
            chunks, [bound](double seconds) { return seconds <= bound; }, &Chunk::seconds);
    (fits ? enough : tooLittle) = bound;
  }
  std::vector<Chunk> chunks = chunksWithin(enough, range, sums);
  splitUpTo(wanted, chunks, sums);
  return chunks;
}

std::string summaryOf(const std::vector<Chunk>& chunks, const FrameCosts& costs) {
  const double dearest = std::ranges::max(chunks, {}, &Chunk::seconds).seconds;
  const FrameRange all{chunks.front().range.first, chunks.back().range.last};
  char text[96];
  std::snprintf(text, sizeof text, "the dearest chunk takes about %.1f s, all in one go %.1f s",
                dearest, CostSums(costs).of(all));
  return text;
}

std::string outputOfChunk(const OutputTarget& target, FrameRange chunk, int last) {
  if (target.holdsPictures()) return target.path.string();
  const std::size_t digits = std::max<std::size_t>(4, std::to_string(last).size());
  const auto padded = [digits](int frame) {
    const std::string text = std::to_string(frame);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
  };
  std::filesystem::path path = target.path;
  path.replace_filename(path.stem().string() + "_" + padded(chunk.first) + "-" +
                        padded(chunk.last) + path.extension().string());
  return path.string();
}

std::string shellWord(const std::string& word) {
  constexpr std::string_view kPlain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_@+=:,./-";
  if (!word.empty() && word.find_first_not_of(kPlain) == word.npos) return word;
  std::string quoted = "'";
  for (const char character : word) {
    quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
  }
  return quoted + "'";
}

std::string shellCommand(const std::vector<std::string>& words) {
  std::string command;
  for (const std::string& word : words) command += (command.empty() ? "" : " ") + shellWord(word);
  return command;
}

void checkThatChunksFit(const OutputTarget& target) {
  if (target.isStandardOutput()) {
    throw UsageError("chunks are written at the same time, which standard output cannot take");
  }
  if (target.holdsPictures() || isJoinable(target.format)) return;
  throw UsageError("chunks of " + target.name() +
                   " cannot be put together; use name_%04d.png, name_%04d.exr, name.mov, name.mp4 "
                   "or name.webm");
}

}  // namespace cli
