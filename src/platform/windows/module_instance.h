// The module's own handle, by which Windows finds its file and its resources.
#pragma once

#include <windows.h>

namespace brisel {

/// Null, which Windows takes for the running program, until the module has been loaded as one.
HINSTANCE moduleInstance();

}  // namespace brisel
