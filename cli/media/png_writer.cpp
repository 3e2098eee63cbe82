#include "cli/media/png_writer.h"

#include <png.h>

#include <bit>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include "cli/support/errors.h"
#include "cli/support/temporary_file.h"

namespace cli {
namespace {

// Sprites over transparent black compress almost as well at this level as at the highest, in a
// fraction of the time.
constexpr int kCompressionLevel = 3;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

void ignoreWarning(png_structp, png_const_charp) {}

void append(png_structp png, png_bytep data, png_size_t size) {
  auto& bytes = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(png));
  bool stored = true;
  try {
    bytes.insert(bytes.end(), data, data + size);
  } catch (const std::bad_alloc&) {
    stored = false;
  }
  if (!stored) png_error(png, "out of memory");  // which jumps, so not out of a handler
}

// libpng reports failure by a jump back to setjmp, so nothing with a destructor lives in here.
bool encode(png_structp png, png_infop info, const Frame& frame) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_set_compression_level(png, kCompressionLevel);
  png_set_IHDR(png, info, static_cast<png_uint_32>(frame.size.width),
               static_cast<png_uint_32>(frame.size.height), static_cast<int>(frame.depth),
               PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  if (frame.depth == Depth::k16 && std::endian::native == std::endian::little) png_set_swap(png);
  for (int y = 0; y < frame.size.height; ++y) png_write_row(png, frame.row(y));
  png_write_end(png, info);
  return true;
}

}  // namespace

void encodePng(const Frame& frame, std::vector<std::uint8_t>& bytes) {
  bytes.clear();
  // The default error handler prints. Memory is all that can run out.
  png_structp png = png_create_write_struct(
      PNG_LIBPNG_VER_STRING, nullptr,
      [](png_structp failed, png_const_charp) { png_longjmp(failed, 1); }, ignoreWarning);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (info) png_set_write_fn(png, &bytes, append, nullptr);
  const bool encoded = info && encode(png, info, frame);
  png_destroy_write_struct(&png, &info);
  if (!encoded) throw std::bad_alloc();
}

void writePngFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path) {
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

void writePng(const Frame& frame, const std::filesystem::path& path) {
  std::vector<std::uint8_t> bytes;
  encodePng(frame, bytes);
  writePngFile(bytes, path);
}

}  // namespace cli
