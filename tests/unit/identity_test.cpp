// What a host knows of the module before and while it loads it: the property list's bytes
// and the folders beside the module.
#include <gtest/gtest.h>

#include <string>

#include "host/module_folders.h"
#include "resources/property_list.h"

namespace {

std::string little(std::uint32_t value, int size = 4) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

/// A four-character code, whose bytes lie in reverse.
std::string code(const std::string& text) {
  return {text.rbegin(), text.rend()};
}

TEST(PropertyList, IsWhatAHostReads) {
  using namespace std::string_literals;
  const std::pair<const char*, std::string> properties[] = {{"kind", "TKFe"},
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
  std::string expected = little(1, 2) + little(0) + little(12);
  for (auto [key, data] : properties) {
    data.resize((data.size() + 3) / 4 * 4);
    const auto length = static_cast<std::uint32_t>(data.size());
    expected += code("8BIM") + code(key) + little(0) + little(length) + data;
  }
  const std::vector<std::uint8_t> bytes = brisel::propertyList();
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), expected);
}

TEST(ModuleFolders, LieWhereTheModuleLies) {
  const brisel::ModuleFolders f = brisel::deriveFolders("/opt/effects/VellixDrizzen_64.AEX");
  EXPECT_STREQ(f.moduleFolder, "/opt/effects/");
  EXPECT_STREQ(f.presetRootFolder, "/opt/effects/Corvane");
  EXPECT_EQ(std::string(f.presetFilePath), std::string(f.presetFolder) + "Drizzen.prs");
  // A renamed module finds a wrong folder, which is known.
  EXPECT_STREQ(brisel::deriveFolders("/opt/effects/Renamed.AEX").moduleFolder, "/opt");
  EXPECT_STREQ(brisel::deriveFolders("/short").moduleFolder, "");
}

TEST(ModuleFolders, AreEmptyWhereTheyDoNotFit) {
  const auto ofLength = [&](std::size_t folder) {
    return brisel::deriveFolders("/" + std::string(folder - 1, 'a') + "/VellixDrizzen_64.AEX");
  };
  // The preset file's path is the longest: 27 characters behind the module's folder.
  EXPECT_EQ(std::string(ofLength(227).presetFilePath).size(), 255u);
  EXPECT_STREQ(ofLength(228).presetFilePath, "");
  EXPECT_STREQ(ofLength(228).moduleFolder, "");
}

}  // namespace
