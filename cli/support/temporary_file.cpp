#include "cli/support/temporary_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "cli/support/errors.h"
#include "cli/support/file_descriptor.h"
#include "cli/support/interrupt.h"

namespace cli {

TemporaryFile::TemporaryFile(std::filesystem::path finalPath) : finalPath_(std::move(finalPath)) {
  path_ = finalPath_;
  path_.replace_filename("." + finalPath_.filename().string() + "." + std::to_string(getpid()) +
                         ".part");
  setUnfinishedFile(path_.c_str());
  const FileDescriptor file(open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  if (!file.isOpen()) {
    setUnfinishedFile(nullptr);
    throw WorkError("cannot write " + inQuotes(finalPath_.string()) + ": " + std::strerror(errno));
  }
}

TemporaryFile::~TemporaryFile() {
  if (path_.empty()) return;
  unlink(path_.c_str());
  setUnfinishedFile(nullptr);
}

void TemporaryFile::commit() {
  std::error_code error;
  std::filesystem::rename(path_, finalPath_, error);
  if (error) {
    throw WorkError("cannot write " + inQuotes(finalPath_.string()) + ": " + error.message());
  }
  setUnfinishedFile(nullptr);
  path_.clear();
}

}  // namespace cli
