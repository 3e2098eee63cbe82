// Where the module looks for its presets.
#include "host/module_folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/module_path.h"

namespace {

using brisel::ModuleFolders;

ModuleFolders deriveFolders(std::string path) {
  std::ranges::replace(path, '/', brisel::kPathSeparator);
  ModuleFolders folders = brisel::deriveFolders(path);
  std::ranges::replace(folders.presetFilePath, brisel::kPathSeparator, '/');
  return folders;
}

TEST(ModuleFolders, LieWhereTheModuleLiesWhateverItIsCalled) {
  for (const char* path : {"/opt/effects/VellixDrizzen_64.AEX", "/opt/effects/brisel.so.2"}) {
    EXPECT_STREQ(deriveFolders(path).presetFilePath, "/opt/effects/Corvane/Drizzen/Drizzen.prs");
  }
  EXPECT_STREQ(deriveFolders("no-folder.AEX").presetFilePath, "");
}

TEST(ModuleFolders, AreEmptyWhereTheyDoNotFit) {
  const auto ofLength = [&](std::size_t folder) {
    return deriveFolders("/" + std::string(folder - 1, 'a') + "/VellixDrizzen_64.AEX");
  };
  // The preset file's path is the longest: 27 characters behind the module's folder.
  EXPECT_EQ(std::string(ofLength(227).presetFilePath).size(), 255u);
  EXPECT_STREQ(ofLength(228).presetFilePath, "");
  EXPECT_STREQ(ofLength(228).moduleFolder, "");
}

}  // namespace
