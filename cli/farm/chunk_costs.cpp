#include "cli/farm/chunk_costs.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "cli/media/frame_writer.h"
#include "cli/support/errors.h"

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMostSeconds = 3;
constexpr int kMostSamples = 8;
constexpr std::size_t kMostSampleBytes = 256 << 20;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Sample {
  int frame;
  double seconds;
  hostkit::World picture;
};

// As a chunk takes it, which leaves out of the input what no star depends on.
double secondsOfStep(const ScenePlan& plan, const RendererOptions& options, int last) {
  SceneRenderer renderer(plan, options, {.state = {}, .firstSeen = last});
  const int first = renderer.firstFrame();
  if (last == first) return 0;
  const Clock::time_point start = Clock::now();
  int frame = first;
  for (; frame < last && secondsSince(start) < kMostSeconds / 3; ++frame) {
    renderer.stepNext(renderer.readNext());
  }
  return secondsSince(start) / (frame - first);
}

double secondsToDraw(SceneRenderer& renderer, hostkit::World& picture) {
  const Clock::time_point start = Clock::now();
  renderer.renderNext(renderer.readNext(), picture);
  return secondsSince(start);
}

// Gone with its owner.
class ScratchFolder {
 public:
  ScratchFolder() {
    path_ = (std::filesystem::temp_directory_path() / "brisel-XXXXXX").string();
    if (mkdtemp(path_.data()) == nullptr) {
      throw WorkError("cannot write into the folder for temporary files");
    }
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::filesystem::path path() const { return path_; }

 private:
  std::string path_;
};

double processorSecondsOfChildren() {
  rusage usage = {};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Encoded into a file that nobody sees; the seconds of one processor that it took, all told.
double secondsToEncode(const ScenePlan& plan, OutputTarget target,
                       const std::vector<Sample>& samples, std::size_t count) {
  const ScratchFolder folder;
  if (!target.holdsPictures()) target.path = folder.path() / target.path.filename();
  const double childrenBefore = processorSecondsOfChildren();
  const auto writer = openFrameWriter(target, plan.size, plan.rate, plan.depth);
  double seconds = 0;
  EncodedFrame encoded;
  for (std::size_t i = 0; i < count; ++i) {
    const Clock::time_point start = Clock::now();
    writer->encode(samples[i].picture, encoded);
    seconds += secondsSince(start);
    if (!target.holdsPictures()) writer->write(encoded.bytes, samples[i].frame);
  }
  writer->finish();
  return seconds + processorSecondsOfChildren() - childrenBefore;
}

// Between the samples in proportion, outside of them as the nearest.
double at(int frame, const std::vector<Sample>& samples) {
  const auto after = std::ranges::lower_bound(samples, frame, {}, &Sample::frame);
  if (after == samples.begin()) return after->seconds;
  if (after == samples.end()) return samples.back().seconds;
  const Sample& before = *(after - 1);
  const double share = 1.0 * (frame - before.frame) / (after->frame - before.frame);
  return before.seconds + share * (after->seconds - before.seconds);
}

std::string milliseconds(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", seconds < 0.001 ? 3 : (seconds < 0.01 ? 1 : 0),
                1e3 * seconds);
  return text;
}

}  // namespace

FrameCosts measureFrames(const ScenePlan& plan, const OutputTarget& target, FrameRange range,
                         const RendererOptions& options) {
  const Clock::time_point start = Clock::now();
  const int frames = range.last + 1;
  FrameCosts costs;
  const double step = secondsOfStep(plan, options, range.last);
  costs.preroll = step * plan.scene.preroll;
  costs.steps.assign(static_cast<std::size_t>(frames), step);
  costs.draws.resize(static_cast<std::size_t>(frames));

  const Clock::time_point starting = Clock::now();
  SceneRenderer renderer(plan, options);
  costs.startUp = secondsSince(starting);
  const std::size_t fit = kMostSampleBytes / worldFor(plan).bytes().size();
  const int wanted = std::min(std::clamp(static_cast<int>(fit), 2, kMostSamples), (frames + 1) / 2);
  std::vector<Sample> samples;
  for (int frame = renderer.firstFrame(); frame < frames; ++frame) {
    const bool isLate = secondsSince(start) > kMostSeconds;
    const long long next = (2LL * static_cast<int>(samples.size()) + 1) * frames / (2 * wanted);
    if (frame < next && !isLate) {
      renderer.stepNext(renderer.readNext());
      continue;
    }
    hostkit::World picture = renderer.newOutput();
    double seconds = secondsToDraw(renderer, picture);
    if (!isLate && frame + 1 < frames) {
      // Another one: what else the machine does rarely delays both.
      seconds = std::min(seconds, secondsToDraw(renderer, picture));
      ++frame;
    }
    samples.push_back({frame, seconds, std::move(picture)});
    if (isLate || static_cast<int>(samples.size()) == wanted) break;
  }

  // Encoding is done by whichever processors are free.
  const double first = secondsToEncode(plan, target, samples, 1);
  const double all = secondsToEncode(plan, target, samples, samples.size());
  const double others = static_cast<double>(samples.size()) - 1;
  const double encoding = others > 0 ? std::max(0.0, all - first) / others : first;
  costs.startUp += std::max(0.0, first - encoding);
  for (Sample& sample : samples) sample.seconds += encoding / options.jobs;
  for (int frame = 0; frame < frames; ++frame) {
    const std::size_t i = static_cast<std::size_t>(frame);
    costs.draws[i] = std::max(at(frame, samples), costs.steps[i]);
  }
  costs.drawn = static_cast<int>(samples.size());
  costs.reached = samples.back().frame;
  return costs;
}

std::string summaryOf(const FrameCosts& costs) {
  const auto [least, most] = std::ranges::minmax(costs.draws);
  char startUp[32];
  std::snprintf(startUp, sizeof startUp, "%.1f s to start", costs.startUp);
  const std::string from = milliseconds(least);
  const std::string to = milliseconds(most);
  return std::string(startUp) + ", " + milliseconds(costs.steps.back()) + " ms a step, " +
         (from == to ? to : from + " to " + to) + " ms a frame (" + std::to_string(costs.drawn) +
         " drawn, up to frame " + std::to_string(costs.reached) + ")";
}

}  // namespace cli
