// An open file descriptor with one owner.
#pragma once

#include <unistd.h>

#include <string>
#include <utility>

namespace cli {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  ~FileDescriptor() { close(); }

  int get() const { return descriptor_; }
  bool isOpen() const { return descriptor_ >= 0; }
  // A name under which programs started by this one can open the file.
  std::string path() const {
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(descriptor_);
  }
  void close() {
    if (isOpen()) ::close(std::exchange(descriptor_, -1));
  }

 private:
  int descriptor_ = -1;
};

}  // namespace cli
