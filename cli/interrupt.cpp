#include "interrupt.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace cli {
namespace {

volatile std::sig_atomic_t interruptRequested = 0;
const char* volatile unfinishedFile = nullptr;
volatile pid_t unfinishedWriter = 0;

// The second signal does not wait for a long frame to end.
void requestInterrupt(int) {
  if (interruptRequested) {
    const pid_t writer = unfinishedWriter;
    if (writer > 0 && kill(writer, SIGKILL) == 0) waitpid(writer, nullptr, 0);
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

void setUnfinishedWriter(pid_t process) {
  unfinishedWriter = process;
}

void throwIfInterrupted() {
  if (interruptRequested) throw Interrupted();
}

}  // namespace cli
