#include "hostkit/module.h"

#include "hostkit/error.h"
#include "hostkit/module_loader.h"

namespace hostkit {

Module Module::load(const std::filesystem::path& path) {
  const std::filesystem::path absolute = std::filesystem::absolute(path);
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(absolute, ignored)) {
    throw Error("there is no effect module at " + absolute.string());
  }
  Module module(absolute, openLibrary(absolute));
  module.entry_ = reinterpret_cast<EntryPoint>(findSymbol(module.library_, "EntryPointFunc"));
  if (module.entry_ == nullptr) {
    throw Error(absolute.string() + " is no effect module: it exports no EntryPointFunc");
  }
  return module;
}

Module::Module(Module&& other) noexcept
    : path_(std::move(other.path_)),
      library_(std::exchange(other.library_, nullptr)),
      entry_(std::exchange(other.entry_, nullptr)) {}

Module& Module::operator=(Module&& other) noexcept {
  std::swap(path_, other.path_);
  std::swap(library_, other.library_);
  std::swap(entry_, other.entry_);
  return *this;
}

Module::~Module() {
  if (library_ != nullptr) closeLibrary(library_);
}

}  // namespace hostkit
