#include "interrupt.h"

#include <csignal>

namespace cli {
namespace {

volatile std::sig_atomic_t interruptRequested = 0;

void requestInterrupt(int) {
  interruptRequested = 1;
}

}  // namespace

void installInterruptHandlers() {
  struct sigaction action = {};
  action.sa_handler = requestInterrupt;  // without SA_RESTART: a blocked read must come back
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGHUP, &action, nullptr);
  action.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &action, nullptr);
}

void throwIfInterrupted() {
  if (interruptRequested) throw Interrupted();
}

}  // namespace cli
