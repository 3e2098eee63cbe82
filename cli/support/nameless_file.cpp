#include "cli/support/nameless_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "cli/support/errors.h"
#include "cli/support/interrupt.h"

namespace cli {
namespace {

[[noreturn]] void fail(const std::string& folder) {
  throw WorkError("cannot write a temporary file in " + inQuotes(folder) + ": " +
                  std::strerror(errno) + "; TMPDIR names another folder");
}

}  // namespace

NamelessFile::NamelessFile() {
  std::error_code error;
  folder_ = std::filesystem::temp_directory_path(error).string();
  std::string name = folder_ + "/brisel.XXXXXX";
  file_ = FileDescriptor(mkostemp(name.data(), O_CLOEXEC));
  if (!file_.isOpen()) fail(folder_);
  unlink(name.c_str());
}

void NamelessFile::append(std::span<const char> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file_.get(), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    } else if (errno == EINTR) {
      throwIfInterrupted();
    } else {
      fail(folder_);
    }
  }
}

}  // namespace cli
