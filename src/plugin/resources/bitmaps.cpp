#include "plugin/resources/bitmaps.h"

#include <cstddef>
#include <cstdint>

namespace {

struct DirectoryEntry {
  std::int32_t identifier;  // the rest is missing where this is 0
  std::uint32_t offset;
  std::uint32_t size;
};

}  // namespace

// bitmaps.S
extern "C" const unsigned char brisel_bitmap_files[];
extern "C" const DirectoryEntry brisel_bitmap_directory[];

namespace brisel {

std::optional<EmbeddedBitmap> findEmbeddedBitmap(int identifier) {
  for (const DirectoryEntry* entry = brisel_bitmap_directory; entry->identifier != 0; ++entry) {
    if (entry->identifier == identifier) {
      return EmbeddedBitmap{identifier, {brisel_bitmap_files + entry->offset, entry->size}};
    }
  }
  return std::nullopt;
}

}  // namespace brisel
