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
extern "C" const unsigned char kBriselBitmapFiles[];
extern "C" const DirectoryEntry kBriselBitmapDirectory[];

namespace brisel {

std::optional<EmbeddedBitmap> findEmbeddedBitmap(int identifier) {
  for (const DirectoryEntry* entry = kBriselBitmapDirectory; entry->identifier != 0; ++entry) {
    if (entry->identifier == identifier) {
      return EmbeddedBitmap{identifier, {kBriselBitmapFiles + entry->offset, entry->size}};
    }
  }
  return std::nullopt;
}

}  // namespace brisel
