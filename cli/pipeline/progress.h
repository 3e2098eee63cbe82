// How far the work is, on standard error: a bar that redraws itself on a terminal, and now and then
// a plain line anywhere else.
#pragma once

#include <chrono>
#include <string>

namespace cli {

// How far the work is, and its speed in frames per second.
struct ProgressState {
  std::string name;  // what is being made
  int done;
  int total;  // above 0
  double framesPerSecond;
};

// The line with the bar, shorter than `columns`, 40 or more: the bar shrinks first, then the speed
// goes, then the end of the name. Characters of the name count as one column each.
std::string progressLine(const ProgressState& state, int columns);

class Progress {
 public:
  // `name` is what is being made.
  Progress(std::string name, int totalFrames);

  // Takes an unfinished bar off the terminal, so that a message can follow on a clean line.
  ~Progress();

  void frameDone();

  // Says how long it took, and how many of the frames were written.
  void finish(int written);

  double elapsedSeconds() const;

 private:
  using Clock = std::chrono::steady_clock;

  double framesPerSecond() const;
  void drawBar();
  void eraseBar();
  void printLine() const;

  std::string name_;
  int total_;
  int done_ = 0;
  bool terminal_;
  bool barShown_ = false;
  Clock::time_point start_;
  Clock::time_point lastShown_;
};

}  // namespace cli
