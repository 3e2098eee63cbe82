#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <limits>
#include <string>

#include "tests/plugin/hosted_effect.h"
#include "tests/support/temporary_folder.h"

namespace {

using tests::EffectTest;

TEST_F(EffectTest, GlobalSetupReportsVersionAndFlags) {
  ASSERT_EQ(session.call(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
  EXPECT_EQ(session.report().version, 0x00100001u);
  EXPECT_EQ(session.report().outFlags, 0x06008454);
  EXPECT_EQ(session.report().outFlags2, 0x00000008);
}

TEST_F(EffectTest, UnknownCommandsSucceedAndChangeNothing) {
  tests::openWithDefaults(session);
  PF_OutData untouched{};
  untouched.sequence_data = session.inData().sequence_data;
  for (const PF_Cmd cmd : {2, PF_Cmd_DO_DIALOG, PF_Cmd_FRAME_SETUP, PF_Cmd_FRAME_SETDOWN, 16, 17,
                           -1, std::numeric_limits<PF_Cmd>::max()}) {
    SCOPED_TRACE(cmd);
    EXPECT_EQ(session.call(cmd), PF_Err_NONE);
    EXPECT_EQ(std::memcmp(&session.outData(), &untouched, sizeof untouched), 0);
  }
  EXPECT_EQ(session.call(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
}

TEST(Loading, WorksFromALongPathAndFromOneInOtherScripts) {
  namespace fs = std::filesystem;
  const tests::TemporaryFolder temporary;
  const fs::path& start = temporary.path();
  const fs::path file = fs::path(BRISEL_MODULE_PATH).filename();
  // As long as Windows takes it, which is too long for the presets' paths.
  const std::size_t rest = 250 - (start / "" / file).string().size();
  const fs::path deep = start / std::string(rest - 1, 'a');
  for (const fs::path& folder : {deep, start / u8"\u661f \u0437\u0432\u0435\u0437\u0434\u0430"}) {
    fs::create_directories(folder);
    fs::copy_file(BRISEL_MODULE_PATH, folder / file, fs::copy_options::overwrite_existing);
    const hostkit::Module module = hostkit::Module::load(folder / file);
    hostkit::Session session(module);
    tests::openWithDefaults(session);
    tests::renderFrame(session, {}, 0);
  }
}

}  // namespace
