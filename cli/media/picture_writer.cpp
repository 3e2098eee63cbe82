#include "cli/media/picture_writer.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/media/exr_writer.h"
#include "cli/media/png_writer.h"
#include "cli/support/errors.h"
#include "cli/support/interrupt.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

void writeToStandardOutput(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    } else if (errno == EINTR) {
      throwIfInterrupted();
    } else {
      throw WorkError(std::string("cannot write standard output: ") + std::strerror(errno));
    }
  }
}

}  // namespace

std::span<const std::uint8_t> PictureWriter::encode(const Frame& frame,
                                                    std::vector<std::uint8_t>& buffer) const {
  if (target_.format == OutputFormat::kPng) {
    encodePng(frame, buffer);
  } else {
    encodeExr(frame, buffer);
  }
  return buffer;
}

void PictureWriter::write(std::span<const std::uint8_t> encoded, int number) {
  if (target_.isStandardOutput()) {
    writeToStandardOutput(encoded);
  } else {
    writeWholeFile(target_.fileOf(number), encoded);
  }
}

}  // namespace cli
