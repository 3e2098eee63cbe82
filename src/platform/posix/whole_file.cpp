#include "platform/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

namespace brisel {
namespace {

/// Calls again what a signal that was meant for the host has interrupted.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

class OpenFile {
 public:
  // Opening a pipe for reading would wait for its writer.
  explicit OpenFile(const char* path)
      : descriptor_(
            uninterrupted([path] { return open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK); })) {}
  ~OpenFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

bool readAll(int descriptor, std::uint8_t* to, std::size_t size) {
  while (size > 0) {
    const ssize_t got = uninterrupted([&] { return read(descriptor, to, size); });
    if (got <= 0) return false;
    to += got;
    size -= static_cast<std::size_t>(got);
  }
  return true;
}

}  // namespace

std::optional<FileBytes> readWholeFile(const char* path) {
  const OpenFile file(path);
  struct stat status {};
  if (file.descriptor() < 0 || fstat(file.descriptor(), &status) != 0 || !S_ISREG(status.st_mode) ||
      status.st_size > kMostFileBytes) {
    return {};
  }
  FileBytes content;
  content.size = static_cast<std::size_t>(status.st_size);
  content.data.reset(new (std::nothrow) std::uint8_t[content.size]);
  if (content.data == nullptr || !readAll(file.descriptor(), content.data.get(), content.size)) {
    return {};
  }
  return content;
}

}  // namespace brisel
