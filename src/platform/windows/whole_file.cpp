#include "platform/whole_file.h"

#include <windows.h>

#include <algorithm>
#include <new>

namespace brisel {
namespace {

class OpenFile {
 public:
  explicit OpenFile(const char* path)
      : handle_(CreateFileA(path, GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~OpenFile() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  HANDLE handle() const { return handle_; }

 private:
  HANDLE handle_;
};

bool readAll(HANDLE file, std::uint8_t* to, std::size_t size) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
  while (size > 0) {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(size, kMostAtOnce));
    if (!ReadFile(file, to, wanted, &got, nullptr) || got == 0) return false;
    to += got;
    size -= got;
  }
  return true;
}

}  // namespace

std::optional<FileBytes> readWholeFile(const char* path) {
  const OpenFile file(path);
  LARGE_INTEGER size{};
  // Devices have names in every folder, and reading from one may wait for ever.
  if (file.handle() == INVALID_HANDLE_VALUE || GetFileType(file.handle()) != FILE_TYPE_DISK ||
      !GetFileSizeEx(file.handle(), &size) || size.QuadPart > kMostFileBytes) {
    return {};
  }
  FileBytes content;
  content.size = static_cast<std::size_t>(size.QuadPart);
  content.data.reset(new (std::nothrow) std::uint8_t[content.size]);
  if (content.data == nullptr || !readAll(file.handle(), content.data.get(), content.size)) {
    return {};
  }
  return content;
}

}  // namespace brisel
