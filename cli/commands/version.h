// What `brisel --version` says.
#pragma once

#include <string>

namespace cli {

// The program's version, the commit it was built from, the version of the module beside it and the
// instruction set that this draws with here.
std::string programVersion();

}  // namespace cli
