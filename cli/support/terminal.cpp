#include "cli/support/terminal.h"

#include <sys/ioctl.h>

namespace cli {

int terminalColumns(int descriptor) {
  constexpr int kUsual = 80;
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsual;
  return size.ws_col;
}

}  // namespace cli
