#include <windows.h>

#include <system_error>

#include "hostkit/error.h"
#include "hostkit/module_loader.h"

namespace hostkit {

void* openLibrary(const std::filesystem::path& path) {
  void* library = LoadLibraryW(path.c_str());
  if (library == nullptr) {
    throw Error("the effect module cannot be loaded: " +
                std::system_category().message(static_cast<int>(GetLastError())));
  }
  return library;
}

void* findSymbol(void* library, const char* name) noexcept {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void closeLibrary(void* library) noexcept {
  FreeLibrary(static_cast<HMODULE>(library));
}

}  // namespace hostkit
