// What `brisel --version` says.
#pragma once

#include <string>

namespace cli {

// The program's version, the commit it was built from, the version of the module next to it and the
// instruction set that the module uses here.
std::string programVersion();

}  // namespace cli
