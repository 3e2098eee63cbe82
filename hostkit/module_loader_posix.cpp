#include <dlfcn.h>

#include "hostkit/error.h"
#include "hostkit/module_loader.h"

namespace hostkit {

void* openLibrary(const std::filesystem::path& path) {
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    throw Error(std::string("the effect module cannot be loaded: ") + dlerror());
  }
  return library;
}

void* findSymbol(void* library, const char* name) noexcept {
  return dlsym(library, name);
}

void closeLibrary(void* library) noexcept {
  dlclose(library);
}

}  // namespace hostkit
