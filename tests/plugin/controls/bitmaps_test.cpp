// The bitmaps built into the module: each control asks for its picture by identifier and size.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "plugin/controls/resource_image.h"

namespace {

#define BITMAP_FILE(identifier, file) {identifier, file},
const std::map<int, std::string> kFiles = {
#include "plugin/resources/bitmap_list.inc"
};

std::string fileOf(int identifier) {
  std::ifstream stream(std::string(RESOURCES_FOLDER) + kFiles.at(identifier), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Bitmaps, AreLoadedAsTheyAreInTheirFilesInTheSizesThatControlsAskFor) {
  const struct {
    int identifier, width, height;
  } expected[] = {{550, 16, 50}, {551, 16, 50}, {563, 16, 50},   {561, 16, 50},
                  {560, 16, 50}, {553, 16, 50}, {992, 41, 36},   {993, 41, 36},
                  {994, 52, 55}, {995, 52, 55}, {998, 445, 100}, {999, 30, 30}};
  for (const auto& [identifier, width, height] : expected) {
    SCOPED_TRACE(identifier);
    const std::string file = fileOf(identifier);
    const auto rowBytes = static_cast<std::size_t>(width * 3 + 3) / 4 * 4;
    const std::size_t size = rowBytes * static_cast<std::size_t>(height);
    ASSERT_EQ(file.size(), 54 + size);
    const auto bitmap = brisel::LoadResourceBitmap(identifier, width, height);
    ASSERT_TRUE(bitmap.pixels);
    ASSERT_EQ(bitmap.rowBytes, rowBytes);
    EXPECT_EQ(std::memcmp(bitmap.pixels.get(), &file[54], size), 0);
  }
  for (const auto& [identifier, width, height] :
       {std::array{998, 0, 100}, {998, 445, 0}, {998, -445, 100}, {998, 444, 100}, {552, 16, 50}}) {
    EXPECT_FALSE(brisel::LoadResourceBitmap(identifier, width, height).pixels);
  }
}

TEST(Bitmaps, TheGreyTextureIsTheRedChannelTopRowFirst) {
  brisel::GreyTexture texture;
  brisel::LoadGreyTexture(texture, 999, 30, 30, 0.5f);
  ASSERT_TRUE(texture.values && texture.width == 30 && texture.height == 30);
  const std::string file = fileOf(999);
  for (std::size_t y = 0; y < 30; ++y) {
    for (std::size_t x = 0; x < 30; ++x) {
      const float red = static_cast<std::uint8_t>(file[54 + (29 - y) * 92 + 3 * x + 2]);
      ASSERT_EQ(texture.values[x + y * 30], red * 0.5f) << x << ", " << y;
    }
  }
  brisel::LoadGreyTexture(texture, 552, 30, 30, 1.0f);
  EXPECT_TRUE(!texture.values && texture.width == 0 && texture.height == 0);
}

}  // namespace
