// The terminal that people look at.
#pragma once

namespace cli {

// The width of the terminal behind that file descriptor as it is now; 80 when it has none, as
// files and pipes do.
int terminalColumns(int descriptor);

}  // namespace cli
