// Presets next to a copy of the module, chosen by name and by clicks in the effect controls.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/scene/effect.h"
#include "tests/cli/pictures_of.h"
#include "tests/cli/scratch.h"

namespace {

using tests::CommandResult;
using Bytes = std::vector<std::uint8_t>;
using Strings = std::vector<std::string>;

constexpr char kFolder[] = "Corvane/Drizzen/";

// Places in the picture of the panel.
constexpr int kRowLeft = 20;  // of the first row of presets
constexpr int kRowTop = 239;
constexpr int kRowHeight = 75;
constexpr int kStripLeft = kRowLeft + 24;
constexpr int kCellWidth = 94;

class PresetTest : public tests::ScratchTest {
 protected:
  PresetTest() {
    const auto module = std::filesystem::path(BRISEL_PROGRAM).parent_path() / cli::kModuleName;
    std::filesystem::copy_file(module, path(cli::kModuleName));
    write("s.toml", kScene);
  }

  // More presets than the row shows, each with its own number, a comment between them.
  void writePresets() const {
    std::string index = "; the first line counts for nothing\r\n[Emmiter]\r\n";
    for (int i = 0; i < 14; ++i) {
      const std::string name = "p" + std::to_string(i);
      index += name + ".txt\t" + name + ".bmp\r\n" + (i == 5 ? "; no preset\r\n\r\n" : "");
      writePreset(name, "Intensity\r\n" + std::to_string(10 + i) + "\r\nStart\r\n0.5 0.25\r\n");
    }
    index += "[Geometry]\r\nstar.txt star.bmp\r\nlost.txt lost.bmp\r\nwrong.txt wrong.bmp";
    // The first two are the defaults.
    writePreset("star",
                "; Four rays,\r\n;  in orange.\r\nSize\r\n25\r\nRays count\r\n4\r\nSize depend on "
                "source\r\n0\r\n"
                "Color of particles\r\n255 128 0 255\r\nType\r\n4\r\nAngle\r\n75\r\n");
    write(kFolder + std::string("wrong.txt"), "Tessaro Parameters\r\nSize\r\n40\r\n");
    write(kFolder + std::string("Drizzen.prs"), index);
  }

  void writePreset(const std::string& name, const std::string& text) const {
    std::filesystem::create_directories(path(kFolder));
    write(kFolder + name + ".txt", "Tessaro parameters\r\n" + text);
  }

  CommandResult withModule(Strings arguments) const {
    arguments.insert(arguments.end(), {"--module", path(cli::kModuleName)});
    return brisel(std::move(arguments));
  }

  // Frame 2 of the scene.
  std::string rendered(Strings options, const std::string& scene = "s.toml") const {
    options.insert(options.begin(),
                   {"render", scene, "-o", "o.png", "--frames", "2", "--overwrite"});
    const CommandResult result = withModule(options);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return read("o.png");
  }

  cli::Frame panel(Strings options = {}) const {
    options.insert(options.begin(), {"panel", "-o", "panel.png", "--overwrite"});
    const CommandResult result = withModule(options);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return tests::picturesOf(path("panel.png")).front();
  }

  static std::string inCell(int cell) {
    return std::to_string(kStripLeft + cell * kCellWidth + kCellWidth / 2) + "," +
           std::to_string(kRowTop + kRowHeight / 2);
  }

  static constexpr char kScene[] = R"([scene]
size = [64, 48]
frames = 3
[params]
"Maximum number of stars" = 500
)";
};

TEST_F(PresetTest, PresetsAreListedRowByRow) {
  const CommandResult none = withModule({"presets"});
  EXPECT_EQ(none.exitCode, 0);
  EXPECT_TRUE(none.out.starts_with("There are no presets: ")) << none.out;
  EXPECT_EQ(withModule({"presets", "--json"}).out, "[]\n");

  writePresets();
  const auto list = nlohmann::json::parse(withModule({"presets", "--json"}).out);
  ASSERT_EQ(list.size(), 17u);
  for (std::size_t i = 0; i < 14; ++i) EXPECT_EQ(list[i]["name"], "p" + std::to_string(i));
  const nlohmann::json wrong = {{"row", "Stars presets"},
                                {"name", "wrong"},
                                {"description", ""},
                                {"file", path(kFolder + std::string("wrong.txt"))},
                                {"thumbnail", path(kFolder + std::string("wrong.bmp"))}};
  EXPECT_EQ(list[16], wrong) << "a last line without a line break";
  EXPECT_NE(withModule({"presets"}).out.find("\nStars presets\n  star   Four rays, in orange.\n"),
            std::string::npos);
  EXPECT_EQ(withModule({"presets", "--names", "RAYS"}).out, "star\n");
}

TEST_F(PresetTest, PresetsSetTheParametersTheyName) {
  writePresets();
  const std::string byHand =
      rendered({"--set", "Intensity=23", "--set", "Start=0.5,0.25", "--set", "Type=4", "--set",
                "Angle=75", "--set", "Color of particles=#ff8000"});
  EXPECT_NE(rendered({}), byHand);
  EXPECT_EQ(rendered({"--preset", "p13", "--preset", "star"}), byHand);
  write("p.toml",
        "[scene]\nsize = [64, 48]\nframes = 3\npresets = [\"p2\", \"star\", \"p13\"]\n"
        "[params]\n\"Maximum number of stars\" = 500\n");
  EXPECT_EQ(rendered({}, "p.toml"), byHand);
}

TEST_F(PresetTest, WhatCannotBeAppliedIsOneSentence) {
  write("p.toml", "[scene]\npresets = [\"p3\"]\n");
  write("bad.toml", "[scene]\npresets = \"p3\"\n");
  const auto complaint = [this](const Strings& arguments, int exitCode) {
    const CommandResult result = withModule(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << result.err;
    EXPECT_TRUE(result.isOneSentence()) << result.err;
    return result.err;
  };
  const auto ofPreset = [&](const std::string& name, int exitCode) {
    return complaint({"render", "s.toml", "-o", "o.mov", "--preset", name}, exitCode);
  };
  EXPECT_NE(ofPreset("p3", 2).find("there are no presets"), std::string::npos);
  EXPECT_EQ(withModule({"render", "s.toml", "-o", "f%d.png"}).exitCode, 0) << "none are needed";

  writePresets();
  EXPECT_NE(ofPreset("satr", 2).find("--preset \"satr\": there is no preset \"satr\"; the nearest "
                                     "is \"star\""),
            std::string::npos);
  for (const std::string name : {"lost", "wrong"}) {
    EXPECT_NE(ofPreset(name, 1).find(path(kFolder + name + ".txt")), std::string::npos);
  }
  EXPECT_NE(
      complaint({"sheet", "bad.toml", "-o", "o.png"}, 1).find("bad.toml:2: presets is a list"),
      std::string::npos);
  write(kFolder + std::string("Drizzen.prs"),
        "\r\n[Emmiter]\r\np1.txt a\r\n[Geometry]\r\np1.prm a");
  EXPECT_NE(ofPreset("p1", 2).find("p1.prm"), std::string::npos) << "which of the two?";
  write(kFolder + std::string("Drizzen.prs"), "\r\n[Emmiter]\r\n../out.txt a\r\n");
  write(kFolder + std::string("../out.txt"), read(kFolder + std::string("star.txt")));
  EXPECT_NE(
      ofPreset("../out", 1).find("out.txt\" is missing, too large or cannot be read, or lies"),
      std::string::npos);
  EXPECT_NE(complaint({"render", "p.toml", "-o", "o.mov"}, 1).find("p.toml:2: there is no preset"),
            std::string::npos);
}

TEST_F(PresetTest, AClickInThePanelIsTheSameAsTheName) {
  writePresets();
  const cli::Frame plain = panel();
  EXPECT_EQ(plain.size.width, 1065);
  const cli::Frame third = panel({"--click", inCell(2)});
  EXPECT_FALSE(third.bytes == plain.bytes);
  EXPECT_TRUE(third.bytes == panel({"--preset", "p2"}).bytes);
  // The row scrolled by one; what lies below it shows the values.
  const auto below = [](const cli::Frame& frame) {
    return Bytes(frame.row(kRowTop + kRowHeight), frame.row(frame.size.height));
  };
  EXPECT_TRUE(below(panel({"--click", "1030,276", "--click", inCell(2)})) ==
              below(panel({"--preset", "p3"})));
  const CommandResult missed = withModule({"panel", "-o", "o.png", "--click", "5,5"});
  EXPECT_EQ(missed.exitCode, 2);
  EXPECT_TRUE(missed.isOneSentence()) << missed.err;
}

TEST_F(PresetTest, ThePanelGraysOutAndShowsWhereThePointerIs) {
  writePresets();
  const cli::Frame plain = panel();
  const cli::Frame hovered = panel({"--hover", inCell(4)});
  ASSERT_EQ(hovered.size, plain.size);
  for (int y = 0; y < plain.size.height; ++y) {
    const bool differs = !std::equal(plain.row(y), plain.row(y) + plain.rowBytes(), hovered.row(y));
    EXPECT_EQ(differs, y >= kRowTop + 2 && y < kRowTop + 73) << y;
  }
  const std::uint8_t* corner = hovered.row(kRowTop + 2) + 4 * (kStripLeft + 4 * kCellWidth);
  EXPECT_EQ(std::vector<int>(corner, corner + 3), (std::vector<int>{255, 0, 0}));

  const auto brightest = [](const cli::Frame& frame, int top, int bottom) {
    int most = 0;
    for (int y = top; y < bottom; ++y) {
      for (std::size_t x = 0; x < 300; ++x) most = std::max<int>(most, frame.row(y)[4 * x]);
    }
    return most;
  };
  constexpr int kDirectionTop =
      514;  // the line of "Direction", which "Perpendicularly" does without
  EXPECT_LT(brightest(plain, kDirectionTop + 2, kDirectionTop + 24), 110);
  EXPECT_GT(brightest(panel({"--set", "Orientation=1"}), kDirectionTop + 2, kDirectionTop + 24),
            150);
}

}  // namespace
