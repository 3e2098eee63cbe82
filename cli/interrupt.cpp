#include "interrupt.h"

#include <unistd.h>

#include <csignal>

namespace cli {
namespace {

volatile std::sig_atomic_t interruptRequested = 0;
const char* volatile unfinishedFile = nullptr;

// The second signal does not wait for a long frame to end.
void requestInterrupt(int) {
  if (interruptRequested) {
    const char* unfinished = unfinishedFile;
    if (unfinished != nullptr) unlink(unfinished);
    _exit(1);
  }
  interruptRequested = 1;
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

void setUnfinishedFile(const char* path) {
  unfinishedFile = path;
}

void throwIfInterrupted() {
  if (interruptRequested) throw Interrupted();
}

}  // namespace cli
