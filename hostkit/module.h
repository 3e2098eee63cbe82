// hostkit: an effect module loaded from a shared library.
#pragma once

#include <filesystem>
#include <utility>

#include "plugin/sdk/entry_point.h"

namespace hostkit {

using EntryPoint = PF_EntryPointFunc*;

// Keeps the library loaded; sessions and anything they hold of the module must end before it.
class Module {
 public:
  // Throws Error when there is no such file, it is no library for this machine, or it exports no
  // EntryPointFunc.
  static Module load(const std::filesystem::path& path);

  Module(Module&& other) noexcept;
  Module& operator=(Module&& other) noexcept;
  ~Module();

  EntryPoint entry() const { return entry_; }
  const std::filesystem::path& path() const { return path_; }  // absolute

 private:
  Module(std::filesystem::path path, void* library) : path_(std::move(path)), library_(library) {}

  std::filesystem::path path_;
  void* library_ = nullptr;
  EntryPoint entry_ = nullptr;
};

}  // namespace hostkit
