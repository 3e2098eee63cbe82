#include "cli/pipeline/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "cli/support/terminal.h"
#include "cli/support/text_table.h"

namespace cli {
namespace {

constexpr int kMostBarCells = 24;
constexpr int kFewestBarCells = 8;
constexpr std::chrono::milliseconds kRedrawInterval(100);

// The cursor waits where the line begins: a terminal that breaks the line anew when it is made
// narrower takes the cursor along, and all of the line lies behind it.
constexpr char kEraseBehind[] = "\x1b[J";
// Characters that take two columns are cut off, too, rather than wrapped.
constexpr char kWrapOff[] = "\x1b[?7l";
constexpr char kWrapOn[] = "\x1b[?7h";

std::string clockText(double seconds) {
  const int whole = static_cast<int>(seconds + 0.5);
  char text[16];
  std::snprintf(text, sizeof text, "%d:%02d", whole / 60, whole % 60);
  return text;
}

bool continuesCharacter(char byte) {
  return (byte & 0xC0) == 0x80;
}

// The name, its end replaced by dots where it has more columns.
std::string shortened(std::string name, int columns) {
  if (columnsOf(name) <= columns) return name;
  const int dots = std::clamp(columns, 0, 3);
  while (columnsOf(name) > std::max(columns - dots, 0)) {
    while (continuesCharacter(name.back())) name.pop_back();
    name.pop_back();
  }
  return name + std::string(static_cast<std::size_t>(dots), '.');
}

std::string barText(int cells, int done, int total) {
  std::string bar(static_cast<std::size_t>(cells), ' ');
  std::fill_n(bar.begin(), static_cast<long long>(cells) * done / total, '#');
  return " [" + bar + "]";
}

}  // namespace

std::string progressLine(const ProgressState& state, int columns) {
  constexpr int kBarEnds = 3;  // the blank before it, and its brackets
  char speed[32];
  std::snprintf(speed, sizeof speed, "  %.1f fps", state.perSecond);
  const std::string count = (state.isStepping ? " step " : " ") + std::to_string(state.done) + '/' +
                            std::to_string(state.total);
  const std::string left = "  " + clockText((state.total - state.done) / state.perSecond) + " left";
  // The last column stays free, as some terminals wrap once it is written to.
  const auto cellsBeside = [&](const std::string& numbers) {
    return columns - 1 - columnsOf(state.name) - columnsOf(numbers) - kBarEnds;
  };
  std::string numbers = count + speed + left;
  if (state.isStepping || cellsBeside(numbers) < kFewestBarCells) numbers = count + left;
  const int cells = std::clamp(cellsBeside(numbers), kFewestBarCells, kMostBarCells);
  const int nameColumns = columns - 1 - columnsOf(numbers) - kBarEnds - cells;
  return shortened(state.name, nameColumns) + barText(cells, state.done, state.total) + numbers;
}

Progress::Progress(std::string name, int steps, int frames, double secondsBetweenLines)
    : name_(std::move(name)),
      frames_(frames),
      stepping_(steps > 0),
      total_(stepping_ ? steps : frames),
      terminal_(isatty(STDERR_FILENO) == 1),
      interval_(terminal_ ? kRedrawInterval
                          : std::chrono::duration_cast<Clock::duration>(
                                std::chrono::duration<double>(secondsBetweenLines))),
      start_(Clock::now()),
      countedSince_(start_),
      lastShown_(start_) {}

Progress::~Progress() {
  eraseBar();
}

void Progress::stepDone() {
  ++stepsDone_;
  if (stepping_) countOne();
}

void Progress::frameDone() {
  if (stepping_) {
    stepping_ = false;
    total_ = frames_;
    done_ = 0;
    countedSince_ = lastShown_ = Clock::now();
  }
  countOne();
}

void Progress::countOne() {
  ++done_;
  const Clock::time_point now = Clock::now();
  if (now - lastShown_ < interval_) return;
  lastShown_ = now;
  if (terminal_) {
    drawBar();
  } else {
    printLine();
  }
}

void Progress::finish() {
  eraseBar();
  const std::string frames = std::to_string(done_) + (done_ == 1 ? " frame" : " frames");
  if (stepsDone_ > 0) {
    std::fprintf(stderr, "%s: %s and %d %s in %.1f s\n", name_.c_str(), frames.c_str(), stepsDone_,
                 stepsDone_ == 1 ? "step" : "steps", elapsedSeconds());
  } else {
    std::fprintf(stderr, "%s: %s in %.1f s (%.1f fps)\n", name_.c_str(), frames.c_str(),
                 elapsedSeconds(), state().perSecond);
  }
}

double Progress::elapsedSeconds() const {
  return std::chrono::duration<double>(Clock::now() - start_).count();
}

ProgressState Progress::state() const {
  const double seconds = std::chrono::duration<double>(Clock::now() - countedSince_).count();
  return {name_, done_, total_, seconds > 0 ? done_ / seconds : 0, stepping_};
}

void Progress::drawBar() {
  barShown_ = true;
  const std::string line = progressLine(state(), terminalColumns(STDERR_FILENO));
  std::fprintf(stderr, "%s%s%s%s\r", kWrapOff, line.c_str(), kEraseBehind, kWrapOn);
  std::fflush(stderr);
}

void Progress::eraseBar() {
  if (barShown_) std::fputs(kEraseBehind, stderr);
  barShown_ = false;
}

void Progress::printLine() const {
  if (stepping_) {
    std::fprintf(stderr, "%s: step %d of %d\n", name_.c_str(), done_, total_);
  } else {
    std::fprintf(stderr, "%s: frame %d of %d, %.1f fps\n", name_.c_str(), done_, total_,
                 state().perSecond);
  }
}

}  // namespace cli
