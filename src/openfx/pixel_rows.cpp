#include "openfx/pixel_rows.h"

#include <cstddef>
#include <cstring>

namespace brisel::openfx {
namespace {

constexpr const PixelRows* kTables[] = {
#if defined(__aarch64__)
    kNeonRows,
#elif defined(__x86_64__)
#if defined(BRISEL_WIDE_KERNELS)
    kAvx512Rows, kAvx2Rows,
#endif
    kSse2Rows,
#endif
    kPlainRows};

}  // namespace

const PixelRows& pixelRows(const char* instructions, Depth depth) {
  const auto index = static_cast<std::size_t>(depth);
  for (const PixelRows* table : kTables) {
    if (std::strcmp(table->instructions, instructions) == 0) return table[index];
  }
  return kPlainRows[index];
}

}  // namespace brisel::openfx
