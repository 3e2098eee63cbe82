// What an instance's frames gain from threads and from not being painted; what more cores than this
// machine has would give, by calculation; and what a star costs before it is painted.
//
// usage: thread_bench [TURNS]
//
// What is compared takes turns, frame by frame, with the same frames. Ratios are medians of all
// turns, so that other work on the machine cannot favor one side. Where two threads do less
// than 1.8 times the arithmetic of one, the machine does not give two whole cores: measure again.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "clock.h"
#include "core_model.h"
#include "effect/instance.h"
#include "render/painter.h"

namespace {

constexpr int kWarmUpFrames = 60;  // after which populations are full
constexpr int kCores[] = {2, 4, 8, 16};

struct Workload {
  const char* name;
  brisel::FrameSize size;
  brisel::PixelFormat format;
  brisel::Values (*values)(brisel::FrameSize);
};

brisel::Values defaults(brisel::FrameSize size) {
  return brisel::Values(size);
}
brisel::Values smallGlows(brisel::FrameSize size) {
  return bench::crowd(size, brisel::StarType::Glow1, true);
}

constexpr Workload kWorkloads[] = {
    {"heavy/1080p/8bit", {1920, 1080}, brisel::PixelFormat::Argb8, bench::heavyScene},
    {"heavy/1080p/16bit", {1920, 1080}, brisel::PixelFormat::Argb16, bench::heavyScene},
    {"default/1080p/8bit", {1920, 1080}, brisel::PixelFormat::Argb8, defaults},
    {"default/2160p/8bit", {3840, 2160}, brisel::PixelFormat::Argb8, defaults},
    {"30,000 small/1080p", {1920, 1080}, brisel::PixelFormat::Argb8, smallGlows},
};

struct Picture {
  explicit Picture(const Workload& load)
      : bytes(static_cast<std::size_t>(load.size.width) *
              static_cast<std::size_t>(load.size.height) *
              (load.format == brisel::PixelFormat::Argb16 ? 8 : 4)),
        view{bytes.data(), load.size.width, load.size.height,
             static_cast<std::ptrdiff_t>(bytes.size()) / load.size.height, load.format} {}

  std::vector<std::uint8_t> bytes;
  brisel::MutableImageView view;
};

/// An instance that renders on from a frame at which the population is full.
class Clip {
 public:
  Clip(const Workload& load, int threads)
      : values_(load.values(load.size)), picture_(load), painter_({.threads = threads}) {
    while (time_ < kWarmUpFrames) instance_.step(values_, time_++, views());
  }

  double renderSeconds() {
    return bench::secondsOf([&] { instance_.render(values_, time_++, views()); });
  }
  double stepSeconds() {
    return bench::secondsOf([&] { instance_.step(values_, time_++, views()); });
  }
  const std::vector<std::uint8_t>& bytes() const { return picture_.bytes; }

 private:
  brisel::FrameViews views() { return {.output = picture_.view, .painter = &painter_}; }

  brisel::Values values_;
  Picture picture_;
  brisel::Painter painter_;
  brisel::Instance instance_;
  int time_ = 0;
};

/// Seconds until another thread of a pool has begun its part of a piece of work.
double wakeSeconds(brisel::WorkerPool& pool) {
  std::atomic<int> begun = 0;
  return bench::secondsOf([&] {
    pool.run(2, [&](int, int) {
      ++begun;
      while (begun < 2) {
      }
    });
  });
}

/// How many times one thread's arithmetic two threads do in the same time, without any memory.
double speedUpOfArithmetic(brisel::WorkerPool& pool) {
  const auto secondsOf = [&](int parts) {
    return bench::secondsOf([&] {
      pool.run(parts, [](int, int) {
        volatile double number = 1.0;
        for (int i = 0; i < 1500000; ++i) number = number * 1.0000001;
      });
    });
  };
  const double one = secondsOf(1);
  return 2.0 * one / secondsOf(2);
}

/// Returns false when the pictures differ.
bool measureThreads(const Workload& load, int turns, brisel::WorkerPool& pool) {
  Clip one(load, 1);
  Clip two(load, 2);
  Clip stepped(load, 1);
  bench::Stages scene(load.values(load.size), load.size);
  for (int time = 0; time < kWarmUpFrames; ++time) {
    scene.step();
    scene.compose(nullptr);
  }
  Picture modeled(load);
  brisel::SpriteList sprites;
  std::vector<double> ones, twos, arithmetic, steps, predicted[std::size(kCores)];
  bench::Prediction most;  // of the greatest number of cores, all turns together
  for (int turn = 0; turn < turns; ++turn) {
    const double wake = wakeSeconds(pool);
    double seconds = 0.0;
    const bool oneFirst = turn % 2 == 0;
    if (oneFirst) seconds = one.renderSeconds();
    arithmetic.push_back(speedUpOfArithmetic(pool));
    const double secondsOfTwo = two.renderSeconds();
    if (!oneFirst) seconds = one.renderSeconds();
    ones.push_back(seconds);
    twos.push_back(seconds / secondsOfTwo);
    steps.push_back(seconds / stepped.stepSeconds());
    const std::size_t which = static_cast<std::size_t>(turn / 2) % std::size(kCores);
    const auto frame = measureFrame(scene, modeled.view, kCores[which], sprites);
    const bench::Prediction prediction = predict(frame, kCores[which], wake);
    predicted[which].push_back(seconds / prediction.seconds());
    if (which == std::size(kCores) - 1) most += prediction;
  }
  std::printf("%-20s %8.2f %8.0f %8.2f %8.2f", load.name, 1000.0 * bench::median(ones),
              bench::median(steps), bench::median(arithmetic), bench::median(twos));
  for (const auto& ratios : predicted) std::printf(" %6.2f", bench::median(ratios));
  for (const double part : {most.painted, most.serial, most.wake, most.uneven}) {
    std::printf(" %7.1f", 100.0 * part / most.seconds());
  }
  std::printf("\n");
  return one.bytes() == two.bytes() && one.bytes() == modeled.bytes;
}

void measureStars(const char* name, brisel::StarType type, bool hasElements, int turns) {
  constexpr brisel::FrameSize kSize{1920, 1080};
  bench::Stages scene(bench::crowd(kSize, type, hasElements), kSize);
  for (int time = 0; time < kWarmUpFrames; ++time) scene.step();
  brisel::SpriteList sprites;
  std::vector<double> step, compose, list;
  for (int turn = 0; turn < turns; ++turn) {
    const double unit = 1e-9 * scene.starCount();
    step.push_back(bench::secondsOf([&] { scene.step(); }) / unit);
    compose.push_back(bench::secondsOf([&] { scene.compose(nullptr); }) / unit);
    list.push_back(bench::secondsOf([&] {
                     sprites.begin(kSize, 128, [] {});
                     scene.compose(&sprites);
                   }) /
                   unit);
  }
  std::printf("%-20s %8d %8.1f %8.1f %8.1f\n", name, scene.starCount(), bench::median(step),
              bench::median(compose), bench::median(list));
}

}  // namespace

int main(int argc, char** argv) {
  const int turns = std::max(argc > 1 ? std::atoi(argv[1]) : 24, 8);
  brisel::WorkerPool pool(2);
  if (pool.threadCount() < 2) {
    std::fputs("thread_bench: the system gives no second thread\n", stderr);
    return 1;
  }
  std::printf("%-20s %8s %8s %17s  calculated for cores         %% of 16 cores' time\n", "", "ms",
              "x a step", "2 threads to 1");
  std::printf("%-38s %8s %8s", "frames of an instance", "numbers", "frames");
  for (const int cores : kCores) std::printf(" %6d", cores);
  std::printf(" %7s %7s %7s %7s\n", "paint", "compose", "wake", "uneven");
  bool same = true;
  for (const Workload& load : kWorkloads) same = measureThreads(load, turns, pool) && same;
  std::printf("\n%-20s %8s %8s %8s %8s\n", "nanoseconds a star", "stars", "step", "compose",
              "to list");
  measureStars("rays", brisel::StarType::Type1, false, turns);
  measureStars("glow+halo+blink", brisel::StarType::Glow1, true, turns);
  if (!same) std::fputs("thread_bench: frames differ\n", stderr);
  return same ? 0 : 1;
}
