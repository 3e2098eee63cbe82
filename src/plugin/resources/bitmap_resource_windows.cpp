#include "plugin/resources/bitmap_resource.h"

#include <cstring>

#include "platform/windows/module_instance.h"

namespace brisel {

// The resource itself is read: a bitmap that the system loads takes on the screen's colors.
bool readBitmapResource(int identifier, int width, int height, std::uint8_t* rows) {
  const HINSTANCE module = moduleInstance();
  const HRSRC resource =
      FindResourceA(module, MAKEINTRESOURCEA(identifier), reinterpret_cast<LPCSTR>(RT_BITMAP));
  if (resource == nullptr) return false;
  const HGLOBAL loaded = LoadResource(module, resource);
  const auto* bytes =
      loaded == nullptr ? nullptr : static_cast<std::uint8_t*>(LockResource(loaded));
  BITMAPINFOHEADER header;
  const std::size_t pixelBytes = bitmapRowBytes(width) * static_cast<std::size_t>(height);
  if (bytes == nullptr || SizeofResource(module, resource) < sizeof header + pixelBytes) {
    return false;
  }
  std::memcpy(&header, bytes, sizeof header);
  if (header.biWidth != width || header.biHeight != height) return false;
  std::memcpy(rows, bytes + sizeof header, pixelBytes);
  return true;
}

}  // namespace brisel
