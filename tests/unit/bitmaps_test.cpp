// The bitmaps built into the module: each control asks for its picture by identifier and size.
#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "resources/bitmaps.h"
#include "ui/resource_image.h"

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

TEST(EmbeddedBitmaps, AreDrawnFromTheirBottomRowOn) {
  const auto banner = brisel::LoadResourceBitmap(998, 445, 100);
  ASSERT_TRUE(banner.pixels);
  ASSERT_EQ(banner.rowBytes, 1336u);
  const auto file = brisel::findEmbeddedBitmap(998)->file;
  EXPECT_EQ(std::memcmp(banner.pixels.get(), &file[54], 1336 * 100), 0);

  for (const auto& [identifier, width, height] :
       {std::array{998, 0, 100}, {998, 445, 0}, {998, -445, 100}, {552, 16, 50}}) {
    EXPECT_FALSE(brisel::LoadResourceBitmap(identifier, width, height).pixels);
  }
}

TEST(EmbeddedBitmaps, TheGreyTextureIsTheRedFromTheTopRowOn) {
  brisel::GreyTexture texture;
  brisel::LoadGreyTexture(texture, 999, 30, 30, 0.5f);
  ASSERT_TRUE(texture.values && texture.width == 30 && texture.height == 30);
  const auto file = brisel::findEmbeddedBitmap(999)->file;
  for (std::size_t y = 0; y < 30; ++y) {
    for (std::size_t x = 0; x < 30; ++x) {
      const float red = file[54 + (29 - y) * 92 + 3 * x + 2];
      ASSERT_EQ(texture.values[x + y * 30], red * 0.5f) << x << ", " << y;
    }
  }
  brisel::LoadGreyTexture(texture, 552, 30, 30, 1.0f);
  EXPECT_TRUE(!texture.values && texture.width == 0 && texture.height == 0);
}

}  // namespace
