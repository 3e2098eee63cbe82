// Where the module looks for its presets.
#include "plugin/module_folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/module_folder.h"

namespace {

using brisel::ModuleFolders;

TEST(ModuleFolders, AreEmptyWhereTheyDoNotFit) {
  const auto ofLength = [](std::size_t length) {
    return brisel::deriveFolders(std::string(length - 1, 'a') + brisel::kPathSeparator);
  };
  // The preset file's path is the longest: 27 characters behind the module's folder.
  std::string path = ofLength(228).presetFilePath;
  EXPECT_EQ(path.size(), 255u);
  std::ranges::replace(path, brisel::kPathSeparator, '/');
  EXPECT_TRUE(path.ends_with("a/Corvane/Drizzen/Drizzen.prs")) << path;
  EXPECT_STREQ(ofLength(229).presetFilePath, "");
  EXPECT_STREQ(ofLength(229).moduleFolder, "");
  EXPECT_STREQ(brisel::deriveFolders("").presetFilePath, "");
}

}  // namespace
