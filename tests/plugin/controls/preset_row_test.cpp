// A row of presets: how it scrolls, and the strip of its thumbnails.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <tuple>

#include "plugin/controls/preset_list.h"
#include "plugin/controls/thumbnail_strip.h"
#include "tests/support/dice.h"

namespace {

using brisel::PresetList;

// First entry shown, one past the last, entries after it, offset.
using Scroll = std::tuple<int, int, int, int>;

PresetList rowOf(std::int32_t count, std::int32_t stripWidth) {
  PresetList list;
  list.items = std::vector<brisel::PresetCell>(static_cast<std::size_t>(count));
  setFrame({10, 20, 10 + stripWidth + 48, 95}, list);
  layOutRow(list);
  EXPECT_EQ(list.stripWidth, stripWidth);
  return list;
}

Scroll drawn(PresetList& list, int clicks = 0) {
  list.firstVisible += clicks;
  normalizeScroll(list);
  return {list.firstVisible, list.endVisible, list.hiddenAfter, list.pixelOffset};
}

TEST(PresetRow, AnyScrollStateIsBroughtIntoRange) {
  tests::Dice dice(41);
  for (int round = 0; round < 2000; ++round) {
    PresetList list = rowOf(dice.integer(0, 30), dice.integer(-300, 1500));
    list.firstVisible = dice.integer(-40, 40);
    list.pixelOffset = dice.integer(-100, 1);
    list.mouseInside = dice.coin();
    list.leftArrowHot = list.rightArrowHot = true;
    SCOPED_TRACE(::testing::Message()
                 << "round " << round << ": " << list.count() << " entries in " << list.stripWidth
                 << ", first " << list.firstVisible << ", offset " << list.pixelOffset);
    const bool isBeforeFirst = list.firstVisible < 0;
    const Scroll scroll = drawn(list);
    EXPECT_TRUE(list.leftArrowHot == list.mouseInside && list.rightArrowHot == list.mouseInside);
    EXPECT_LE(list.endVisible, list.count());
    EXPECT_GE(list.firstVisible, 0);
    brisel::composeStrip(list);
    if (list.stripWidth < 0) continue;
    const int cells = list.endVisible - list.firstVisible;
    EXPECT_TRUE(!isBeforeFirst || list.firstVisible == 0);
    EXPECT_EQ(cells, std::min(list.count(), list.stripWidth / 94 + 1));
    EXPECT_EQ(list.hiddenAfter,
              list.count() < list.stripWidth / 94 + 1 ? -1 : list.count() - list.endVisible);
    if (list.pixelOffset != 0) {
      EXPECT_EQ(list.endVisible, list.count());
      EXPECT_EQ(list.pixelOffset + 94 * cells, list.stripWidth) << "ends at the right edge";
    }
    EXPECT_EQ(drawn(list), scroll) << "and stays";
  }
}

// The strip's pixel as its description has it: the last one drawn there.
std::array<int, 3> expectedAt(const PresetList& list, int x, int y) {
  for (int i = list.endVisible - 1; i >= list.firstVisible; --i) {
    const brisel::BmpImage& thumbnail = list.items[static_cast<std::size_t>(i)].thumbnail;
    const int cell = i - list.firstVisible;
    const bool hot = cell == list.hotCell;
    const int inCell = x - list.pixelOffset - 94 * cell;
    const int column = inCell - 3, row = y - (hot ? 2 : 3);
    if (column >= 0 && column < thumbnail.width && row >= 0 && row < thumbnail.height) {
      const int at = 3 * (row * thumbnail.width + column);
      const std::uint8_t* rgb = &thumbnail.pixels[static_cast<std::size_t>(at)];
      return {rgb[2], rgb[1], rgb[0]};
    }
    if (inCell >= 0 && inCell < 94) {
      return hot ? std::array{0, 0, 255} : std::array{255, 200, 100};
    }
  }
  return {0, 0, 0};
}

TEST(PresetRow, StripShowsCellsAndThumbnails) {
  const std::pair<int, int> sizes[] = {{88, 65}, {200, 90}, {0, 0}, {1, 1}, {94, 71}, {300, 3}};
  tests::Dice dice(42);
  for (const auto& [count, width, clicks] :
       {std::tuple{6, 400, 0}, {6, 401, 9}, {6, 376, 9}, {2, 401, 0}, {6, 1, 5}, {0, 7, 0}}) {
    for (const int hotCell : {255, 0, 1, 4}) {
      SCOPED_TRACE(::testing::Message() << count << " entries in " << width << ", " << clicks
                                        << " clicks, hot " << hotCell);
      PresetList list = rowOf(count, width);
      for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        brisel::BmpImage& thumbnail = list.items[i].thumbnail;
        std::tie(thumbnail.width, thumbnail.height) = sizes[i];
        const auto bytes = 3 * static_cast<std::size_t>(thumbnail.width) *
                           static_cast<std::size_t>(thumbnail.height);
        if (bytes > 0) thumbnail.pixels = std::make_unique<std::uint8_t[]>(bytes);
        std::generate_n(thumbnail.pixels.get(), bytes, [&] { return dice.bits() & 0xFF; });
      }
      list.hotCell = static_cast<std::uint8_t>(hotCell);
      drawn(list, clicks);
      const brisel::ThumbnailStrip strip = composeStrip(list);
      const std::size_t rowBytes = static_cast<std::size_t>(width * 3 + 3) / 4 * 4;
      ASSERT_TRUE(strip.pixels);
      ASSERT_EQ(strip.bytes, rowBytes * 71);
      for (int y = 0; y < 71; ++y) {
        const std::uint8_t* at = strip.pixels.get() + rowBytes * static_cast<std::size_t>(y);
        for (int x = 0; x < width; ++x, at += 3) {
          ASSERT_EQ((std::array<int, 3>{at[0], at[1], at[2]}), expectedAt(list, x, y))
              << x << ", " << y;
        }
        const std::uint8_t* end = strip.pixels.get() + rowBytes * static_cast<std::size_t>(y + 1);
        ASSERT_TRUE(std::all_of(at, end, [](int byte) { return byte == 0; })) << "padding of " << y;
      }
    }
  }
  for (const int width : {0, -1, -48}) EXPECT_FALSE(composeStrip(rowOf(3, width)).pixels) << width;
}

}  // namespace
