#include "platform/open_document.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace brisel {

void openDocument(const char* target, void* /*parentWindow*/) {
  // Without a shell in between, no character of a path means anything but itself.
  char program[] = "xdg-open";
  char* const arguments[] = {program, const_cast<char*>(target), nullptr};
  pid_t process = 0;
  if (posix_spawnp(&process, program, nullptr, nullptr, arguments, environ) != 0) return;
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {  // by a signal meant for the host
  }
}

}  // namespace brisel
