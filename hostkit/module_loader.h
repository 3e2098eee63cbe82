// hostkit: the operating system's shared libraries; one implementation per system.
#pragma once

#include <filesystem>

namespace hostkit {

// Throws Error with the system's reason. `path` is absolute, so that no search path is consulted.
void* openLibrary(const std::filesystem::path& path);
void* findSymbol(void* library, const char* name) noexcept;  // null when it is not exported
void closeLibrary(void* library) noexcept;

}  // namespace hostkit
