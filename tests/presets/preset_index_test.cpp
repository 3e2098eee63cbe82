// The index of presets and their thumbnails: what is read of them.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/whole_file.h"
#include "presets/bmp_file.h"
#include "presets/preset_index.h"
#include "tests/presets/preset_files.h"
#include "tests/support/folder_test.h"

namespace {

using brisel::BmpImage;
using tests::bitmap;

using Row = std::vector<std::string>;

class PresetIndexTest : public tests::FolderTest {
 protected:
  // Entries as "parameter file:thumbnail"; a file name that is missing is "".
  Row row(const std::string& section) {
    const auto name = [this](const std::string& file) {
      EXPECT_LE(file.size(), 255u);
      EXPECT_TRUE(file.empty() || file.starts_with(folder())) << file;
      return file.empty() ? file : file.substr(folder().size());
    };
    Row entries;
    for (const auto& [parameters, thumbnail] :
         brisel::ReadPresetIndex({path("index").string(), folder()}, section.c_str())) {
      entries.push_back(name(parameters) + ":" + name(thumbnail));
    }
    return entries;
  }

  Row rowOf(const std::string& index, const std::string& section = "Emmiter") {
    write("index", index);
    return row(section);
  }
};

const std::string kBoth = "title\r\n[Emmiter]\r\na 1\r\nb 2\r\n[Geometry]\r\nc 3\r\n";

TEST_F(PresetIndexTest, SectionsAreFoundByTheBeginningOfTheirHeaders) {
  EXPECT_EQ(rowOf(kBoth), (Row{"a:1", "b:2"}));
  EXPECT_EQ(rowOf(kBoth, "Geometry"), (Row{"c:3"}));
  const std::string turned = "\r\n[Geometry]\r\nc 3\r\n[Emmiter]\r\na 1\r\nb 2\r\n";
  EXPECT_EQ(rowOf(turned), (Row{"a:1", "b:2"}));
  EXPECT_EQ(rowOf(turned, "Geometry"), (Row{"c:3"}));
  EXPECT_EQ(rowOf("[Emmiter]\r\na 1\r\n[Geometry]\r\nc 3\r\n"), Row{}) << "the first line";
  EXPECT_EQ(rowOf("[Emmiter]\r\na 1\r\n[Geometry]\r\nc 3\r\n", "Geometry"), (Row{"c:3"}));
  EXPECT_EQ(rowOf("t\r\n[EmmiterOld]\r\na 1\r\n[Emmiter]\r\nb 2\r\n"), (Row{"a:1"}));
  EXPECT_EQ(rowOf("t\r\n[Emmite]\r\na 1\r\n[emmiter]\r\nb 2\r\n[ Emmiter]\r\nb 2\r\n"), Row{});
  EXPECT_EQ(rowOf("t\r\n[Emmiter]\r\n[Geometry]\r\nc 3\r\n"), Row{}) << "no entries";
  EXPECT_EQ(rowOf("t\r\n[Emmiter]"), Row{});
}

TEST_F(PresetIndexTest, ReadsNoMoreThanAFolderOfPresetsHas) {
  std::string many = "t\r\n[Emmiter]\r\n";
  for (int i = 0; i < 100'001; ++i) many += "a b\r\n";
  EXPECT_EQ(rowOf(many).size(), 100'000u);
  write("index", kBoth);
  std::filesystem::resize_file(path("index"), brisel::kMostFileBytes);
  EXPECT_EQ(row("Emmiter").size(), 2u);
  std::filesystem::resize_file(path("index"), brisel::kMostFileBytes + 1);
  EXPECT_EQ(row("Emmiter"), Row{});
}

TEST_F(PresetIndexTest, EveryListStartsEmpty) {
  ASSERT_EQ(rowOf(kBoth).size(), 2u);
  EXPECT_EQ(rowOf(""), Row{});
  ASSERT_EQ(rowOf(kBoth).size(), 2u);
  EXPECT_EQ(row("Nothing"), Row{});
  ASSERT_EQ(rowOf(kBoth).size(), 2u);
  std::filesystem::remove(path("index"));
  EXPECT_EQ(row("Emmiter"), Row{});
  std::filesystem::create_directory(path("index"));
  EXPECT_EQ(row("Emmiter"), Row{});
}

TEST_F(PresetIndexTest, EntriesAreTwoWordsOfALine) {
  const std::string start = "t\r\n;c\r\n[Emmiter]\r\n";
  EXPECT_EQ(rowOf(start + ";x 1\r\na 1\r\n;[Geometry]\r\n\r\n\r\n;y 2\r\nb 2\r\n; z 3"),
            (Row{"a:1", "b:2"}));
  EXPECT_EQ(rowOf(start + " a\t 1 rest 2\r\nb   2  \r\n"), (Row{"a:1", "b:2"}));
  EXPECT_EQ(rowOf(start + "\xE9\x80 1\r\n"), (Row{"\xE9\x80:1"})) << "bytes, not signed characters";
  EXPECT_EQ(rowOf(start + "a none\r\nb 2\r\n"), (Row{"a:none", "b:2"}));
  for (const std::string end : {"", "\r", "\r\n", "\n"}) {
    EXPECT_EQ(rowOf(start + "a 1\r\nb 2" + end), (Row{"a:1", "b:2"}));
  }
  EXPECT_EQ(rowOf(start + "a 1\r\nb"), (Row{"a:1", "b:"}));
  EXPECT_EQ(rowOf(start + "a\r\nb 2\r\nc 3\r\n"), (Row{"a:b", "c:3", ":"})) << "a lone word";
  EXPECT_EQ(rowOf(start + "a\r\n2 b\r\nc 3\r\n"), (Row{"a:2", "c:3", ":"}));
  EXPECT_EQ(rowOf(start + "a]b 1\r\nc 3\r\n"), (Row{":", "c:3"}));
  EXPECT_EQ(rowOf(start + "a 1]\r\nc 3\r\n").back(), "c:3");
  EXPECT_EQ(rowOf("t\n[Emmiter]\na 1\nb 2\nc 3\n[Geometry]\n"), (Row{"b:2", ":"}))
      << "bare line feeds lose the line after the header, and that after each entry";
}

TEST_F(PresetIndexTest, WhatIsTooLongIsRefused) {
  const std::string start = "t\r\n[Emmiter]\r\n";
  const std::string longest(255 - folder().size(), 'p');
  EXPECT_EQ(rowOf(start + longest + " 1\r\nb 2\r\n"), (Row{longest + ":1", "b:2"}));
  for (const std::size_t more : {1u, 20u, 300u}) {
    const std::string tooLong(longest.size() + more, 'p');
    EXPECT_EQ(rowOf(start + tooLong + " 1\r\nb 2\r\n"), (Row{":", "b:2"})) << more;
    const Row entries = rowOf(start + "a " + tooLong + "\r\nb 2\r\n");
    EXPECT_TRUE(entries[0].ends_with(":") && entries[1] == "b:2") << more;
  }
  const std::string fits = "[Emmiter" + std::string(248, 'x') + "\r\n";
  EXPECT_EQ(rowOf("t\r\n" + fits + "a 1\r\n"), (Row{"a:1"}));
  EXPECT_EQ(rowOf("t\r\n[Emmiter" + std::string(249, 'x') + "\r\na 1\r\n[Emmiter]\r\nb 2\r\n"),
            (Row{"b:2"}));
}

class BmpFileTest : public tests::FolderTest {
 protected:
  BmpImage load(const std::string& file) {
    write("image", file);
    return brisel::LoadBmpFile(path("image").string().c_str());
  }

  // As in a file, and padding that would show.
  static std::string rows(int bits) {
    return bits == 24 ? "abcdefghi\xEE\xEE\xEEjklmnopqr\xEE\xEE\xEE"
                      : std::string("\0\1\2\3\4\xFF\xEE\xEE\6\7\x8\x9\xA\xB\xEE\xEE", 16);
  }
};

TEST_F(BmpFileTest, TurnsRowsUprightAndPixelsToRedGreenBlue) {
  for (const std::uint32_t gap : {0u, 100u}) {
    const BmpImage full = load(bitmap(24, 3, 2, rows(24), 54 + gap));
    ASSERT_TRUE(full.width == 3 && full.height == 2);
    EXPECT_EQ(std::string(full.pixels.get(), full.pixels.get() + 18), "lkjonmrqpcbafedihg");

    const BmpImage indexed = load(bitmap(8, 6, 2, rows(8), 1078 + gap));
    ASSERT_TRUE(indexed.width == 6 && indexed.height == 2);
    std::string expected;
    for (const int index : {6, 7, 8, 9, 10, 11, 0, 1, 2, 3, 4, 255}) {
      expected += static_cast<char>(255 - index);
      expected += static_cast<char>(index ^ 0x55);
      expected += static_cast<char>(index);
    }
    EXPECT_EQ(std::string(indexed.pixels.get(), indexed.pixels.get() + 36), expected);
  }
  const BmpImage unpadded = load(bitmap(8, 4, 2, std::string("\0\1\2\3\4\5\6\7", 8), 1078));
  ASSERT_TRUE(unpadded.pixels);
  EXPECT_EQ(unpadded.pixels[2], 4) << "rows whose width is a multiple of four need no padding";
}

TEST_F(BmpFileTest, RefusesWhatItCannotHold) {
  for (const int bits : {32, 16, 4, 1, 0}) {
    EXPECT_FALSE(load(bitmap(bits, 3, 2, std::string(64, 'x'), 54)).pixels) << bits;
  }
  for (const int bits : {24, 8}) {
    const std::uint32_t data = bits == 24 ? 54 : 1078;
    EXPECT_FALSE(load(bitmap(bits, 3, 0, rows(bits), data)).pixels) << "no rows";
    EXPECT_FALSE(load(bitmap(bits, 3, 2, rows(bits), data | 1u << 31)).pixels) << "pixels beyond";
    const std::string whole = bitmap(bits, bits == 24 ? 3 : 6, 2, rows(bits), data);
    const std::size_t padding = bits == 24 ? 3 : 2;
    for (std::size_t length = 0; length < whole.size(); ++length) {
      const BmpImage image = load(whole.substr(0, length));
      EXPECT_TRUE(!image.pixels || length >= whole.size() - padding) << length;
    }
  }
  EXPECT_FALSE(brisel::LoadBmpFile(path("none").string().c_str()).pixels);
  EXPECT_FALSE(brisel::LoadBmpFile(folder().c_str()).pixels);
}

}  // namespace
