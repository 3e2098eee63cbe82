#include "plugin/resources/bitmaps.h"

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

std::span<const unsigned char> embeddedBitmap(int identifier) {
  for (const DirectoryEntry* entry = kBriselBitmapDirectory; entry->identifier != 0; ++entry) {
    if (entry->identifier == identifier) return {kBriselBitmapFiles + entry->offset, entry->size};
  }
  return {};
}

}  // namespace brisel
