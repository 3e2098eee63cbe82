#include "cli/support/temporary_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "cli/support/errors.h"
#include "cli/support/file_descriptor.h"
#include "cli/support/interrupt.h"

namespace cli {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

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

void writeWholeFile(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
  TemporaryFile temporary(path);
  std::unique_ptr<std::FILE, FileCloser> file(std::fopen(temporary.path().c_str(), "wb"));
  errno = 0;
  bool written = file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  const int writeError = errno;
  if (file && std::fclose(file.release()) != 0) written = false;
  if (!written) {
    throw WorkError("cannot write " + inQuotes(path.string()) + ": " +
                    std::strerror(writeError != 0 ? writeError : errno));
  }
  temporary.commit();
}

}  // namespace cli
