// Ctrl-C and polite termination: the first signal only raises a flag, and the work notices it at
// its next step, so that destructors run and half-written files disappear. A second one ends the
// program at once.
#pragma once

#include <sys/types.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace cli {

// What shells report of a program that Ctrl-C ended.
inline constexpr int kInterruptedExitCode = 130;

struct Interrupted : std::runtime_error {
  explicit Interrupted(const std::string& message = "interrupted") : std::runtime_error(message) {}
};

// Takes over SIGINT, SIGTERM and SIGHUP, and ignores SIGPIPE so that a vanished reader shows up as
// a write error. Call once, at start.
void installInterruptHandlers();

// Ends the program without destructors, and removes the half-written file first. May be called in a
// signal handler.
[[noreturn]] void endAtOnce(int exitCode);

// Names the half-written file that endAtOnce removes; null when there is none. The name is borrowed
// until the next call. One thread at a time has such a file.
void setUnfinishedFile(const char* path);

// Starts the child that writes that file, which would go on with what it was sent so far: it ends
// before the file is removed. `start` returns its process, or 0 when there is none, and throws
// nothing. endAtOnce waits until that is known.
void startUnfinishedWriter(const std::function<pid_t()>& start);

// The child is about to end by itself.
void forgetUnfinishedWriter();

// Throws Interrupted when one of the signals has arrived. To be called between frames and whenever
// a system call returns EINTR.
void throwIfInterrupted();

}  // namespace cli
