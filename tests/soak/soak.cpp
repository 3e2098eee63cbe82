// What hosts do with the module and the frei0r filter, over and over. Prints at each tenth of the
// time what was done so far and what the process holds, and fails when it holds more and more.
//
//   soak SECONDS
#include <dlfcn.h>
#include <malloc.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "effect/parameters.h"
#include "hostkit/session.h"
#include "tests/frei0r/small_host.h"
#include "tests/support/dice.h"
#include "tests/support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using hostkit::Session;
using hostkit::World;
using tests::Dice;

/// What the process holds of the system.
struct Holding {
  long kilobytes = 0;  // resident
  long descriptors = 0;
  long threads = 0;

  static Holding now() {
    const auto entries = [](const char* folder) {
      return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    };
    Holding held;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
      if (word == "VmRSS:") status >> held.kilobytes;
    }
    held.descriptors = entries("/proc/self/fd");
    held.threads = entries("/proc/self/task");
    return held;
  }
};

class NoPainter : public hostkit::Painter {
 public:
  void fillRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&) override {}
  void strokeRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&, float) override {}
  void drawImage(const hostkit::PaintedImage&, const DRAWBOT_PointF32&, float) override {}
};

void requireUnloaded(const fs::path& library) {
  if (dlopen(library.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr) {
    throw std::runtime_error(library.filename().string() + " stays loaded");
  }
}

/// Values as people choose them, of few stars.
void chooseValues(Session& session, Dice& dice) {
  hostkit::ParameterSet& parameters = session.parameters();
  for (const hostkit::Parameter& parameter : parameters.list()) {
    if (parameter.index == 0 || dice.coin()) continue;
    if (const auto range = sliderRange(parameter)) {
      const float number =
          dice.real(static_cast<float>(range->min), static_cast<float>(range->max));
      const bool isWhole = parameter.type() == PF_Param_SLIDER;
      parameters.setNumber(parameter.index, isWhole ? static_cast<int>(number) : number);
    } else if (parameter.type() == PF_Param_POPUP) {
      const auto items = static_cast<std::int32_t>(parameter.items.size());
      parameters.setItem(parameter.index, dice.integer(1, items));
    } else if (parameter.type() == PF_Param_ANGLE) {
      parameters.setNumber(parameter.index, dice.real(-360, 360));
    } else if (parameter.type() == PF_Param_POINT) {
      parameters.setPoint(parameter.index, dice.integer(-9, 60), dice.integer(-9, 60));
    }
  }
  parameters.setNumber(brisel::kMaximumNumberOfStars, dice.integer(0, 60));
  parameters.setNumber(brisel::kRaysCount, dice.integer(0, 9));
}

void renderFrames(Session& session, Dice& dice, int frames) {
  const auto depth = dice.coin() ? hostkit::Depth::Bits16 : hostkit::Depth::Bits8;
  const auto world = [&] {
    return World(dice.integer(1, 48), dice.integer(1, 36), depth,
                 {.rowPadding = 2 * dice.integer(0, 5)});
  };
  World input = world();
  World output = world();
  for (int frame = 0; frame < frames; ++frame) session.render(input, output, {.frame = frame});
}

class Soak {
 public:
  Soak() {
    fs::copy_file(BRISEL_MODULE_PATH, moduleCopy_);
    fs::copy_file(FILTER_PATH, filterCopy_);
    session_.open();
  }

  /// A round takes some milliseconds.
  void round() {
    for (int i = 0; i < 10; ++i) render();
    useControls();
    makeInstance();
    useThreads();
    loadModule();
    loadFilter();
  }

  void print(int tenth, const Holding& held) const {
    std::printf("%5d %10ld %9ld %9ld %8ld %8ld %8ld %9ld %7ld %8ld\n", tenth, renders_, events_,
                instances_, threads_, modules_, filters_, held.kilobytes, held.descriptors,
                held.threads);
    std::fflush(stdout);
  }
  static void printHeading() {
    std::printf(
        "tenth    renders    events instances  threads  modules  filters  resident  "
        "files  threads\n%76s\n",
        "loaded   loaded        kB   open  running");
  }

 private:
  void render() {
    constexpr int kFrames = 10;
    chooseValues(session_, dice_);
    renderFrames(session_, dice_, kFrames);
    renders_ += kFrames;
  }

  void useControls() {
    NoPainter painter;
    const PF_Rect pane{0, 0, dice_.integer(60, 700), dice_.integer(60, 120)};
    const auto point = [&] { return PF_Point{dice_.integer(0, 700), dice_.integer(0, 120)}; };
    for (const auto control :
         {brisel::kInformation, brisel::kEmitterPresets, brisel::kStarPresets}) {
      session_.draw(control, pane, &painter);
      session_.hover(control, pane, point());
      // A click on the header opens pages.
      if (control != brisel::kInformation) session_.click(control, pane, point());
      events_ += 3;
    }
  }

  void makeInstance() {
    Session session(module_);
    session.open();
    renderFrames(session, dice_, 2);
    session.flatten();
    session.resetup();
    session.close();
    ++instances_;
  }

  /// Instances that share nothing, each rendered on a thread that comes and goes, and on those of
  /// its painter, whose number changes.
  void useThreads() {
    std::array<std::unique_ptr<Session>, 3> sessions;
    for (auto& session : sessions) {
      session = std::make_unique<Session>(module_);
      session->open();
      session->useOwnState();
      ++instances_;
    }
    std::vector<std::thread> threads;
    for (std::uint32_t i = 0; i < sessions.size(); ++i) {
      threads.emplace_back([&session = *sessions[i], dice = Dice(dice_.bits())]() mutable {
        for (const int count : {2, 4, 1}) {
          session.usePainting(count);
          renderFrames(session, dice, 2);
        }
      });
      threads_ += 5;
      renders_ += 6;
    }
    for (std::thread& thread : threads) thread.join();
  }

  void loadModule() {
    {
      const hostkit::Module module = hostkit::Module::load(moduleCopy_);
      Session session(module);
      session.open();
      renderFrames(session, dice_, 2);
      session.usePainting(2);
      renderFrames(session, dice_, 1);
      session.close();
    }
    requireUnloaded(moduleCopy_);
    ++modules_;
  }

  void loadFilter() {
    {
      tests::FilterLibrary library(filterCopy_.c_str());
      const auto width = static_cast<unsigned>(dice_.integer(1, 48));
      std::vector<std::uint32_t> frame(std::size_t{width} * 20);
      tests::HostedFilter filter(width, 20, library);
      filter.set("Presets", dice_.coin() ? "sparkler" : "comet");
      for (const int number : {0, 1, 2, 9, 4})
        library.update(filter.instance, number / 25.0, frame.data(), frame.data());
    }
    requireUnloaded(filterCopy_);
    ++filters_;
  }

  tests::TemporaryFolder folder_;
  fs::path moduleCopy_ = folder_.path() / "module.AEX";
  fs::path filterCopy_ = folder_.path() / "filter.so";
  hostkit::Module module_ = hostkit::Module::load(BRISEL_MODULE_PATH);
  Session session_{module_};
  Dice dice_{0};
  long renders_ = 0, events_ = 0, instances_ = 0, threads_ = 0, modules_ = 0, filters_ = 0;
};

/// The first half fills what is kept on purpose. The last two tenths may not both hold more, but
/// for what the allocator's luck makes of sizes that change.
bool isFlat(const std::vector<Holding>& tenths) {
  const auto growth = [&](long Holding::*what) {
    const auto middle = tenths.begin() + std::ssize(tenths) / 2;
    const Holding& most = *std::ranges::max_element(tenths.begin(), middle, {}, what);
    return std::min(tenths.back().*what, tenths.end()[-2].*what) - most.*what;
  };
  constexpr long kMostKilobytes = 1024;
  return growth(&Holding::kilobytes) <= kMostKilobytes && growth(&Holding::descriptors) <= 0 &&
         growth(&Holding::threads) <= 0;
}

int run(double seconds) {
  using Clock = std::chrono::steady_clock;
  constexpr int kTenths = 10;
  Soak soak;
  Soak::printHeading();
  std::vector<Holding> tenths;
  const auto begin = Clock::now();
  for (int tenth = 1; tenth <= kTenths; ++tenth) {
    const auto end = begin + std::chrono::duration<double>(seconds * tenth / kTenths);
    do {
      soak.round();
    } while (Clock::now() < end);
    tenths.push_back(Holding::now());
    soak.print(tenth, tenths.back());
  }
  if (isFlat(tenths)) return EXIT_SUCCESS;
  std::fprintf(stderr, "the end holds more than the first half did\n");
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) try {
  const double seconds = argc == 2 ? std::atof(argv[1]) : 0;
  if (seconds <= 0) {
    std::fprintf(stderr, "usage: soak SECONDS\n");
    return 2;
  }
  mallopt(M_ARENA_MAX, 1);  // others come with threads that meet by chance, and look like a leak
  return run(seconds);
} catch (const std::exception& failure) {
  std::fprintf(stderr, "soak: %s\n", failure.what());
  return EXIT_FAILURE;
}
