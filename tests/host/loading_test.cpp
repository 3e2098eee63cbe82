#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "hosted_effect.h"
#include "hostkit/error.h"

namespace {

using hostkit::Module;

std::string refusal(const std::filesystem::path& path) {
  try {
    Module::load(path);
  } catch (const hostkit::Error& error) {
    return error.what();
  }
  return "";
}

TEST(Loading, SaysWhatIsWrongWithAFileThatIsNoModule) {
  EXPECT_NE(refusal("nowhere/VellixDrizzen_64.AEX").find("no effect module at"), std::string::npos);
  EXPECT_NE(refusal(std::filesystem::temp_directory_path()).find("no effect module at"),
            std::string::npos);
  EXPECT_NE(refusal(NO_ENTRY_POINT_PATH).find("exports no EntryPointFunc"), std::string::npos);

  const auto text = std::filesystem::path(::testing::TempDir()) / "text.AEX";
  std::ofstream(text) << "this is no library";
  EXPECT_NE(refusal(text).find("cannot be loaded"), std::string::npos);
  std::filesystem::remove(text);
}

TEST(Loading, AModuleCanBeLoadedAndLetGoRepeatedly) {
  for (int round = 0; round < 3; ++round) {
    Module module = Module::load(BRISEL_MODULE_PATH);
    Module moved = std::move(module);
    EXPECT_NE(moved.entry(), nullptr);
    hostkit::Session session(moved);
    hosttest::openWithDefaults(session);
    hosttest::renderFrame(session, {}, 0);
  }
}

}  // namespace
