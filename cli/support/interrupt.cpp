#include "cli/support/interrupt.h"

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <ctime>

namespace cli {
namespace {

std::atomic<bool> interruptRequested = false;
std::atomic<bool> ending = false;
std::atomic<const char*> unfinishedFile = nullptr;
std::atomic<pid_t> unfinishedWriter = 0;
std::atomic<bool> writerStarts = false;
static_assert(decltype(ending)::is_always_lock_free &&
              decltype(unfinishedFile)::is_always_lock_free &&
              decltype(unfinishedWriter)::is_always_lock_free);

// The second signal does not wait for a long frame to end.
void requestInterrupt(int) {
  if (interruptRequested.exchange(true)) endAtOnce(kInterruptedExitCode);
}

// endAtOnce may be at work in another thread with the name and the process that it found. Called
// after changing them and before what was there goes, so that it either sees the change or holds
// this thread.
void waitForTheEndIfEnding() {
  while (ending) pause();
}

// What the caller has us ignore, as nohup does, stays ignored.
void interruptOn(int signal) {
  struct sigaction action = {};
  sigaction(signal, nullptr, &action);
  if (action.sa_handler == SIG_IGN) return;
  action = {};
  action.sa_handler = requestInterrupt;  // without SA_RESTART: a blocked read must come back
  sigaction(signal, &action, nullptr);
}

}  // namespace

void installInterruptHandlers() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) interruptOn(signal);
  // A vanished reader and a file size limit then show up as write errors.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

void endAtOnce(int exitCode) {
  ending = true;
  constexpr timespec kMoment{0, 1'000'000};
  while (writerStarts) nanosleep(&kMoment, nullptr);
  const pid_t writer = unfinishedWriter;
  if (writer > 0 && kill(writer, SIGKILL) == 0) waitpid(writer, nullptr, 0);
  const char* unfinished = unfinishedFile;
  if (unfinished != nullptr) unlink(unfinished);
  _exit(exitCode);
}

void setUnfinishedFile(const char* path) {
  unfinishedFile = path;
  waitForTheEndIfEnding();
}

void startUnfinishedWriter(const std::function<pid_t()>& start) {
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, &before);  // endAtOnce in this thread would wait for itself
  writerStarts = true;
  if (!ending) unfinishedWriter = start();
  writerStarts = false;
  waitForTheEndIfEnding();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void forgetUnfinishedWriter() {
  unfinishedWriter = 0;
  waitForTheEndIfEnding();
}

void throwIfInterrupted() {
  if (interruptRequested) throw Interrupted();
}

}  // namespace cli
