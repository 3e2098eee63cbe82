// How long something was at work, added up over threads.
#pragma once

#include <atomic>
#include <chrono>

namespace cli {

class BusyTime {
 public:
  // Counts from here to the end of the block.
  class Scope {
   public:
    explicit Scope(BusyTime& time) : time_(time) {}
    ~Scope() { time_.total_ += (Clock::now() - start_).count(); }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    BusyTime& time_;
    std::chrono::steady_clock::time_point start_ = Clock::now();
  };

  double seconds() const {
    return std::chrono::duration<double>(Clock::duration(total_.load())).count();
  }

 private:
  using Clock = std::chrono::steady_clock;

  std::atomic<Clock::rep> total_ = 0;
};

}  // namespace cli
