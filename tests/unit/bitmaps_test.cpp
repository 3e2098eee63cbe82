// The bitmaps built into the module: each control asks for its picture by identifier and size.
#include <gtest/gtest.h>

#include <cstring>

#include "resources/bitmaps.h"

namespace {

template <typename Number>
Number numberAt(std::span<const unsigned char> file, std::size_t offset) {
  Number number;
  std::memcpy(&number, file.data() + offset, sizeof number);
  return number;
}

TEST(EmbeddedBitmaps, HaveTheSizesTheControlsAskFor) {
  const struct {
    int identifier, width, height;
  } expected[] = {{550, 16, 50}, {551, 16, 50}, {563, 16, 50},   {561, 16, 50},
                  {560, 16, 50}, {553, 16, 50}, {992, 41, 36},   {993, 41, 36},
                  {994, 52, 55}, {995, 52, 55}, {998, 445, 100}, {999, 30, 30}};
  for (const auto& [identifier, width, height] : expected) {
    SCOPED_TRACE(identifier);
    const auto bitmap = brisel::findEmbeddedBitmap(identifier);
    ASSERT_TRUE(bitmap);
    const auto rowBytes = static_cast<std::size_t>(width * 3 + 3) / 4 * 4;
    ASSERT_EQ(bitmap->file.size(), 54 + rowBytes * static_cast<std::size_t>(height));
    EXPECT_EQ(numberAt<std::uint32_t>(bitmap->file, 10), 54u);
    EXPECT_EQ(numberAt<std::int32_t>(bitmap->file, 18), width);
    EXPECT_EQ(numberAt<std::int32_t>(bitmap->file, 22), height) << "positive: bottom row first";
    EXPECT_EQ(numberAt<std::uint16_t>(bitmap->file, 28), 24);
    EXPECT_EQ(numberAt<std::uint32_t>(bitmap->file, 30), 0u) << "uncompressed";
  }
  EXPECT_FALSE(brisel::findEmbeddedBitmap(552));
  EXPECT_FALSE(brisel::findEmbeddedBitmap(0));
}

}  // namespace
