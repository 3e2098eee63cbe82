// How far the work is, on standard error: a bar that redraws itself on a terminal, and now and then
// a plain line anywhere else.
#pragma once

#include <chrono>
#include <string>

namespace cli {

// How far the work is, and its speed per second.
struct ProgressState {
  std::string name;  // what is being made
  int done;
  int total;  // above 0
  double perSecond;
  bool isStepping = false;  // towards the first frame, by steps that paint nothing
};

// The line with the bar, shorter than `columns`, 40 or more: the bar shrinks first, then the speed
// goes, then the end of the name. Characters of the name count as one column each.
std::string progressLine(const ProgressState& state, int columns);

class Progress {
 public:
  static constexpr double kBetweenLines = 5;

  // `name` is what is being made; `steps` come before the first of the `frames`. The lines that
  // there are without a terminal come that many seconds after each other.
  Progress(std::string name, int steps, int frames, double secondsBetweenLines = kBetweenLines);

  // Takes an unfinished bar off the terminal, so that a message can follow on a clean line.
  ~Progress();

  // Steps between frames count for no more than the message at the end.
  void stepDone();
  void frameDone();

  // Says how much was done, and how long it took.
  void finish();

  double elapsedSeconds() const;

 private:
  using Clock = std::chrono::steady_clock;

  void countOne();
  ProgressState state() const;
  void drawBar();
  void eraseBar();
  void printLine() const;

  std::string name_;
  int frames_;
  int stepsDone_ = 0;
  bool stepping_;  // before the first frame
  int total_;      // of steps then, of frames later; the same for what follows
  int done_ = 0;
  bool terminal_;
  Clock::duration interval_;  // of what is shown
  bool barShown_ = false;
  Clock::time_point start_;  // of all
  Clock::time_point countedSince_;
  Clock::time_point lastShown_;
};

}  // namespace cli
