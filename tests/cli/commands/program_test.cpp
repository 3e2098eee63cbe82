// The program around rendering: help, listings, contact sheets.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "cli/media/media_info.h"
#include "cli/scene/effect.h"
#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

using tests::CommandResult;

using ProgramTest = tests::ScratchTest;

TEST(Versions, AreUnpackedAsTheHostPacksThem) {
  EXPECT_EQ(cli::versionText((9u << 26 >> 3 << 3) | (1u << 19) | (5u << 15) | (3u << 11) |
                             (3u << 9) | 17u),
            "73.5.3 release, build 17");
}

TEST_F(ProgramTest, HelpSucceedsAndMisuseDoesNot) {
  for (const std::string command : {"", "render", "checkpoint", "chunks", "join", "farm", "sheet",
                                    "panel", "new", "params", "presets", "info", "preview"}) {
    std::vector<std::string> arguments = {"--help"};
    if (!command.empty()) arguments.insert(arguments.begin(), command);
    const CommandResult result = brisel(arguments);
    EXPECT_EQ(result.exitCode, 0) << command;
    EXPECT_NE(result.out.find("Usage: brisel"), std::string::npos);
    EXPECT_TRUE(result.err.empty());
  }
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{},
        {"rendr"},
        {"--nothing"},
        {"params", "zork"},
        {"presets", "zork"},
        {"render", "s.toml", "-o", "f.mov", "--threads", "257"},
        {"render", "s.toml", "-o", "f.mov", "--depth", "32"}}) {
    const CommandResult result = brisel(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err.rfind("brisel: ", 0), 0u) << result.err;
  }
  EXPECT_NE(brisel({"rendr"}).err.find("the nearest is \"render\""), std::string::npos);
  EXPECT_EQ(
      brisel({"render", "s.toml", "--frame=3", "-o", "f.png"}).err,
      "brisel: there is no option \"--frame\"; the nearest is \"--frames\" (brisel render --help "
      "tells more)\n");
  const std::string help = brisel({"render", "--help"}).out;
  EXPECT_EQ(brisel({"help", "render"}).out, help);
  EXPECT_EQ(brisel({"render", "help"}).out, help);
  const CommandResult lost = brisel({"info", "--module", "lost.AEX"});
  EXPECT_EQ(lost.exitCode, 1);
  EXPECT_NE(lost.err.find("lost.AEX"), std::string::npos) << lost.err;
}

// The manual, which has a test of its own, is made of all that scripts are told but the index.
TEST_F(ProgramTest, ParametersAreListedForPeopleAndScripts) {
  EXPECT_EQ(nlohmann::json::parse(brisel({"params", "--json"}).out).back()["index"], 81);
  std::istringstream table(brisel({"params"}).out);
  for (std::string line; std::getline(table, line);) EXPECT_LE(line.size(), 80u) << line;
  EXPECT_NE(table.str().find("\n24      Time life    "), std::string::npos) << "indented twice";
  EXPECT_EQ(table.str().find("group end"), std::string::npos);
  EXPECT_EQ(brisel({"params", "--names", "fade"}).out, "Time fade\n");
  EXPECT_EQ(brisel({"params", "--names", "size", "disp"}).out,
            "Size dispersion\nSize dispersion of elements\n");
  EXPECT_EQ(brisel({"params", "--names", "glow2"}).out, "Type\n") << "an item";
  EXPECT_EQ(brisel({"params", "--names", "new random size"}).out, "Size jittering\n")
      << "a description";
}

TEST_F(ProgramTest, AFullStandardOutputIsAnError) {
  const CommandResult result = run({"sh", "-c", "exec " BRISEL_PROGRAM " params > /dev/full"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(result.isOneSentence()) << result.err;
}

TEST_F(ProgramTest, InfoTellsWhatTheModuleReports) {
  const std::string out = brisel({"info"}).out;
  for (const char* part : {"VellixDrizzen_64.AEX", "2.0.0 develop, build 1 (0x00100001)",
                           "0x06008454: ", "0x00000008: ", "82, with the input layer"}) {
    EXPECT_NE(out.find(part), std::string::npos) << part << " in\n" << out;
  }
  EXPECT_EQ(out.find('\r'), std::string::npos) << "the host's line break";
}

TEST_F(ProgramTest, VersionTellsCommitAndInstructionSet) {
  const CommandResult result = brisel({"--version"});
  EXPECT_EQ(result.exitCode, 0) << result.err;
  const auto commit = run({"git", "-C", SOURCE_FOLDER, "rev-parse", "--short", "HEAD"}).out;
  const std::string expected = "brisel 2.0.0\ncommit          " +
                               (commit.empty() ? "unknown" : commit.substr(0, commit.size() - 1));
  EXPECT_TRUE(result.out.starts_with(expected)) << result.out;
  const std::regex rest(
      "\nmodule          2.0.0 develop, build 1\ninstruction set [a-z]+[0-9]*\n$");
  EXPECT_TRUE(std::regex_search(result.out, rest)) << result.out;
}

TEST_F(ProgramTest, ANewSceneRendersAtOnce) {
  ASSERT_EQ(brisel({"new", "own.toml"}).exitCode, 0);
  ASSERT_EQ(brisel({"new", "a.toml", "--preset", "fountain", "--preset", "sparkle"}).exitCode, 0);
  EXPECT_NE(read("a.toml").find("\npresets = [\"fountain\", \"sparkle\"]\n"), std::string::npos);
  for (const std::string scene : {"own.toml", "a.toml"}) {
    const CommandResult result =
        brisel({"render", scene, "-o", scene + ".png", "--size", "64x36", "--frames", "0"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
  }
  EXPECT_EQ(brisel({"new", "a.toml"}).exitCode, 1) << "exists";
  EXPECT_EQ(brisel({"new", "a.toml", "--overwrite"}).exitCode, 0);
  EXPECT_EQ(brisel({"new", "b.mp4"}).exitCode, 2);
  EXPECT_NE(brisel({"new", "b.toml", "--preset", "Ring"}).err.find("\"ring-of-fire\""),
            std::string::npos);
  EXPECT_EQ(names(),
            (std::vector<std::string>{"a.toml", "a.toml.png", "own.toml", "own.toml.png"}));
}

// As far as it can be had without the shell's own line: what is offered for the last word.
TEST_F(ProgramTest, TheShellCompletesCommandsOptionsAndNames) {
  write("s.toml", "");
  write("s.txt", "");
  const auto offered = [this](const std::string& words) {
    const std::string script =
        "source " SHARE_FOLDER
        "/bash-completion/completions/brisel; compopt() { :; }; COMP_WORDS=(" +
        words + "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _brisel;" +
        "(IFS=,; echo -n \"${COMPREPLY[*]}\")";
    return run({"bash", "-c", script}).out;
  };
  const std::string program = BRISEL_PROGRAM;
  EXPECT_EQ(offered("brisel pre"), "preview,presets");
  EXPECT_EQ(offered("brisel render --fra"), "--frames");
  EXPECT_EQ(offered("brisel render --quality ''"), "high,low");
  EXPECT_EQ(offered("brisel render --depth = 1"), "16") << "as the shell splits --depth=1";
  EXPECT_EQ(offered("brisel render s"), "s.toml");
  EXPECT_EQ(offered(program + " render --preset Ring"), "ring-of-fire");
  EXPECT_EQ(offered(program + " render --set 'Size\\ d'"),
            "Size depend on source=,Size dispersion=,Size dispersion of elements=");
  EXPECT_EQ(offered(program + " params mix"), "Mix with original");
}

TEST_F(ProgramTest, SheetsShowEveryScene) {
  for (const char* name : {"a.toml", "b.toml"}) write(name, "[scene]\nsize=[64,36]\nframes=9\n");
  ASSERT_EQ(brisel({"sheet", "a.toml", "-o", "one.png", "--cell-width", "64"}).exitCode, 0);
  ASSERT_EQ(
      brisel({"sheet", "a.toml", "b.toml", "-o", "two.png", "--cell-width", "64", "--count", "3"})
          .exitCode,
      0);
  const cli::FrameSize one = tests::infoOf(path("one.png")).size;
  const cli::FrameSize two = tests::infoOf(path("two.png")).size;
  EXPECT_EQ(one.width - two.width, 64 + 8) << "four columns and three, gaps between";
  EXPECT_GT(two.height, 2 * 36);
  EXPECT_EQ(brisel({"sheet", "a.toml", "-o", "one.png"}).exitCode, 1) << "exists";
  EXPECT_EQ(brisel({"sheet", "a.toml", "-o", "one.mov"}).exitCode, 2);
  EXPECT_EQ(brisel({"sheet", "none.toml", "-o", "new.png"}).exitCode, 1);
  EXPECT_FALSE(std::filesystem::exists(path("new.png")));
}

}  // namespace
