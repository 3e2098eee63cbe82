// What a host knows of the module before and while it loads it: the property list's bytes, read as
// a host reads them, and the folders beside the module.
#include <gtest/gtest.h>

#include <string>

#include "host/module_folders.h"
#include "resources/property_list.h"

namespace {

/// Reads the list front to back.
class Reader {
 public:
  explicit Reader(const std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

  std::uint32_t number(std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) value |= std::uint32_t{bytes_.at(at_ + i)} << (8 * i);
    at_ += size;
    return value;
  }
  std::string text(std::size_t size) {
    std::string characters;
    for (std::size_t i = 0; i < size; ++i) characters += static_cast<char>(bytes_.at(at_ + i));
    at_ += size;
    return characters;
  }
  /// A four-character code, whose bytes lie in reverse.
  std::string code() {
    const std::string reversed = text(4);
    return {reversed.rbegin(), reversed.rend()};
  }
  bool atEnd() const { return at_ == bytes_.size(); }

 private:
  const std::vector<std::uint8_t>& bytes_;
  std::size_t at_ = 0;
};

TEST(PropertyList, ReadsAsAHostReadsIt) {
  using namespace std::string_literals;
  const auto little = [](std::uint32_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i));
    return bytes;
  };
  const std::pair<const char*, std::string> expected[] = {{"kind", "TKFe"},
                                                          {"name",
                                                           "\x10"
                                                           "Corvane - Brisel"},
                                                          {"catg",
                                                           "\x07"
                                                           "Tessaro"},
                                                          {"8664", "EntryPointFunc\0"s},
                                                          {"ePVR", little(2u << 16)},
                                                          {"eSVR", little(13u << 16 | 2)},
                                                          {"eVER", little(0x00100001)},
                                                          {"eINF", little(0)},
                                                          {"eGLO", little(0x06008454)},
                                                          {"eGL2", little(8)},
                                                          {"eMNA",
                                                           "\x10"
                                                           "Vellix (Drizzen)"},
                                                          {"aeFL", little(0)}};
  const std::vector<std::uint8_t> bytes = brisel::propertyList();
  Reader list(bytes);
  EXPECT_EQ(list.number(2), 1u);
  EXPECT_EQ(list.number(4), 0u);
  EXPECT_EQ(list.number(4), 12u);
  for (const auto& [key, data] : expected) {
    SCOPED_TRACE(key);
    EXPECT_EQ(list.code(), "8BIM");
    EXPECT_EQ(list.code(), key);
    EXPECT_EQ(list.number(4), 0u);
    const std::uint32_t length = list.number(4);
    EXPECT_EQ(length % 4, 0u);
    std::string padded = data;
    padded.resize((data.size() + 3) / 4 * 4);
    EXPECT_EQ(list.text(length), padded);
  }
  EXPECT_TRUE(list.atEnd());
}

TEST(ModuleFolders, LieWhereTheModuleLies) {
  const brisel::ModuleFolders f = brisel::deriveFolders("/opt/effects/VellixDrizzen_64.AEX");
  EXPECT_STREQ(f.moduleFolder, "/opt/effects/");
  EXPECT_STREQ(f.presetRootFolder, "/opt/effects/Corvane");
  EXPECT_EQ(std::string(f.presetFilePath), std::string(f.presetFolder) + "Drizzen.prs");
  EXPECT_EQ(std::string(f.presetFolder).size(),
            std::string("/opt/effects/Corvane/Drizzen/").size());
}

TEST(ModuleFolders, AreCutByTheLengthOfTheName) {
  // A renamed module finds a wrong folder, which is known.
  EXPECT_STREQ(brisel::deriveFolders("/opt/effects/Renamed.AEX").moduleFolder, "/opt");
  EXPECT_STREQ(brisel::deriveFolders("/short").moduleFolder, "");
  EXPECT_STREQ(brisel::deriveFolders("VellixDrizzen_64.AEX").presetRootFolder, "Corvane");
  const std::string name = "/VellixDrizzen_64.AEX";
  const auto ofLength = [&](std::size_t folder) {
    return brisel::deriveFolders("/" + std::string(folder - 1, 'a') + name);
  };
  // The preset file's path is the longest: 27 characters behind the module's folder.
  EXPECT_EQ(std::string(ofLength(227).presetFilePath).size(), 255u);
  EXPECT_STREQ(ofLength(228).presetFilePath, "");
  EXPECT_STREQ(ofLength(228).moduleFolder, "");
}

}  // namespace
