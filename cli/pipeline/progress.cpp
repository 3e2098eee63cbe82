#include "cli/pipeline/progress.h"

#include <unistd.h>

#include <cstdio>

namespace cli {
namespace {

constexpr int kBarCells = 24;
constexpr std::chrono::milliseconds kRedrawInterval(100);
constexpr std::chrono::seconds kLineInterval(5);
constexpr char kEraseLine[] = "\r\x1b[K";

std::string clockText(double seconds) {
  const int whole = static_cast<int>(seconds + 0.5);
  char text[16];
  std::snprintf(text, sizeof text, "%d:%02d", whole / 60, whole % 60);
  return text;
}

}  // namespace

Progress::Progress(std::string name, int totalFrames)
    : name_(std::move(name)),
      total_(totalFrames),
      terminal_(isatty(STDERR_FILENO) == 1),
      start_(Clock::now()),
      lastShown_(start_) {}

Progress::~Progress() {
  if (barShown_) std::fputs(kEraseLine, stderr);
}

void Progress::frameDone() {
  ++done_;
  const Clock::time_point now = Clock::now();
  const Clock::duration interval = terminal_ ? Clock::duration(kRedrawInterval) : kLineInterval;
  if (now - lastShown_ < interval) return;
  lastShown_ = now;
  if (terminal_) {
    drawBar();
  } else {
    printLine();
  }
}

void Progress::finish(int written) {
  if (barShown_) std::fputs(kEraseLine, stderr);
  barShown_ = false;
  std::string frames = std::to_string(written);
  if (written < done_) frames += " of " + std::to_string(done_) + " rendered";
  frames += done_ == 1 ? " frame" : " frames";
  std::fprintf(stderr, "%s: %s in %.1f s (%.1f fps)\n", name_.c_str(), frames.c_str(),
               elapsedSeconds(), framesPerSecond());
}

double Progress::elapsedSeconds() const {
  return std::chrono::duration<double>(Clock::now() - start_).count();
}

double Progress::framesPerSecond() const {
  const double seconds = elapsedSeconds();
  return seconds > 0 ? done_ / seconds : 0;
}

void Progress::drawBar() {
  barShown_ = true;
  const double rate = framesPerSecond();
  const std::string filled(static_cast<std::size_t>(kBarCells * done_ / total_), '#');
  std::fprintf(stderr, "%s%s [%-*s] %d/%d  %.1f fps  %s left", kEraseLine, name_.c_str(), kBarCells,
               filled.c_str(), done_, total_, rate, clockText((total_ - done_) / rate).c_str());
  std::fflush(stderr);
}

void Progress::printLine() const {
  std::fprintf(stderr, "%s: frame %d of %d, %.1f fps\n", name_.c_str(), done_, total_,
               framesPerSecond());
}

}  // namespace cli
