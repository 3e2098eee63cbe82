// The built filter as hosts call it: what it says of itself, frames in any order, on any thread and
// at any size, and what it does with what cannot be.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <set>
#include <thread>

#include "tests/frei0r/small_host.h"
#include "tests/support/folder_test.h"

namespace {

using namespace tests;

constexpr unsigned kWidth = 83;
constexpr unsigned kHeight = 47;
constexpr double kRate = 25;

/// All that varies from frame to frame, on a filter of its own.
struct BusyFilter : HostedFilter {
  explicit BusyFilter(FilterLibrary& library = theLibrary())
      : HostedFilter(kWidth, kHeight, library) {
    set("Presets", "sparkler, lens-flare");
    set("Intensity", 0.4).set("Time life", 0.2).set("Type of halo", "Random");
    set("Frames per second", "25");
  }
  ClipFrame frame(int number) { return update(number / kRate, clip); }

  ClipFrame clip = patternedFrame(kWidth, kHeight);
};

std::vector<ClipFrame> inOrder(int frames) {
  BusyFilter filter;
  std::vector<ClipFrame> rendered;
  for (int i = 0; i < frames; ++i) rendered.push_back(filter.frame(i));
  return rendered;
}

TEST(Filter, SaysWhatItIsAndNamesEachParameterOnce) {
  FilterLibrary& library = theLibrary();
  EXPECT_STREQ(library.info().name, "Brisel");
  EXPECT_EQ(library.info().plugin_type, F0R_PLUGIN_TYPE_FILTER);
  EXPECT_EQ(library.info().color_model, F0R_COLOR_MODEL_RGBA8888);
  std::set<std::string> names;
  for (const f0r_param_info_t& parameter : library.parameters()) {
    EXPECT_TRUE(names.insert(parameter.name).second) << parameter.name;
    EXPECT_NE(parameter.explanation, nullptr);
    EXPECT_NE(parameter.type, F0R_PARAM_POSITION) << "which some hosts do not know";
  }
  EXPECT_EQ(names.size(), 72);
  EXPECT_EQ(library.indexOf("Scene"), 0);
  EXPECT_EQ(library.indexOf("Presets"), 1);
  EXPECT_EQ(library.indexOf("Frames per second"), 71);

  HostedFilter filter(720, 576);
  EXPECT_EQ(filter.text("Scene"), "");
  EXPECT_EQ(filter.text("Standard path"), "Bezier");
  EXPECT_EQ(filter.text("Mix with original"), "Add");
  EXPECT_DOUBLE_EQ(filter.number("Size"), 25.0 / 150);
  EXPECT_DOUBLE_EQ(filter.number("Angle"), 30.0 / 360);
  EXPECT_DOUBLE_EQ(filter.number("Grow up"), 0.5);
  EXPECT_DOUBLE_EQ(filter.number("Control start Y"), 0.35);
}

TEST(Filter, DrawsAFrameByItsNumberInWhateverOrderHostsAsk) {
  const std::vector<ClipFrame> expected = inOrder(60);
  ASSERT_NE(expected[8], expected[9]);
  BusyFilter filter;
  for (const int frame : {3, 5, 1, 1, 0, 59, 58, 17, 18, 16, 40, 40, 8, 59}) {
    EXPECT_EQ(filter.frame(frame), expected[static_cast<std::size_t>(frame)]) << frame;
  }
  ClipFrame inPlace = filter.clip;
  theLibrary().update2(filter.instance, 2 / kRate, inPlace.pixels.data(), nullptr, nullptr,
                       inPlace.pixels.data());
  EXPECT_EQ(inPlace, expected[2]);

  std::vector<std::thread> threads;
  std::vector<ClipFrame> drawn(60);
  for (int part = 0; part < 4; ++part) {  // as hosts that give each thread a filter and some frames
    threads.emplace_back([&, part] {
      BusyFilter own;
      for (int frame = part; frame < 60; frame += 4)
        drawn[static_cast<std::size_t>(frame)] = own.frame(frame);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(drawn == expected);
}

TEST(Filter, LetsThreadsThatShareItWait) {
  const std::vector<ClipFrame> expected = inOrder(24);
  BusyFilter shared;
  std::vector<std::thread> threads;
  for (int part = 0; part < 3; ++part) {
    threads.emplace_back([&, part] {
      for (int frame = 0; frame < 24; ++frame) {
        shared.set("Size jittering", 0.25).set("Type of halo", "Random");  // what it is
        const auto number = static_cast<std::size_t>((frame * 7 + part) % 24);
        EXPECT_EQ(shared.frame(static_cast<int>(number)), expected[number]);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(Filter, LeavesToPresetsWhatHostsSetToItsDefault) {
  const std::vector<ClipFrame> expected = inOrder(12);
  BusyFilter filter;
  filter.setAllAgain();
  EXPECT_EQ(filter.frame(11), expected[11]);
  filter.set("Size", 0.5);
  EXPECT_NE(filter.frame(11), expected[11]);
}

TEST(Filter, StartsAfreshWhenAFrameIsEditedAndFollowsKeyframes) {
  BusyFilter played, edited;
  const auto keyframe = [](BusyFilter& filter, int frame) {
    filter.set("Intensity", 0.1 + frame * 0.01).set("Start X", frame * 0.01);
    return filter.frame(frame);
  };
  std::vector<ClipFrame> keyframed;
  for (int frame = 0; frame < 30; ++frame) keyframed.push_back(keyframe(played, frame));
  for (const int frame : {24, 17, 29}) {
    EXPECT_EQ(keyframe(played, frame), keyframed[static_cast<std::size_t>(frame)]) << frame;
  }

  for (int frame = 0; frame < 30; ++frame) edited.frame(frame);
  BusyFilter fresh;
  for (BusyFilter* filter : {&edited, &fresh}) filter->set("Gravity", 0.9);
  EXPECT_EQ(edited.frame(29), fresh.frame(29));
  EXPECT_EQ(edited.frame(20), fresh.frame(20));
}

TEST(Filter, TakesItemsByTextOrNumberAndNumbersBeyondTheSlider) {
  const auto drawnWith = [](const char* name, const auto& value) {
    BusyFilter filter;
    filter.set(name, value);
    return filter.frame(9);
  };
  const ClipFrame circle = drawnWith("Standard path", "Circle");
  EXPECT_EQ(drawnWith("Standard path", "5"), circle);
  EXPECT_EQ(drawnWith("Standard path", "circle"), circle);
  EXPECT_NE(drawnWith("Standard path", "Line"), circle);
  EXPECT_NE(drawnWith("Gravity", 1.0), drawnWith("Gravity", 3.0)) << "beyond the slider";
  EXPECT_EQ(drawnWith("Gravity", 700.0), drawnWith("Gravity", 1e9)) << "beyond the valid range";
  EXPECT_NE(drawnWith("Angle", 0.25), drawnWith("Angle", 0.3));
  EXPECT_NE(drawnWith("Color of particles", f0r_param_color_t{1, 0, 0}),
            drawnWith("Color of particles", f0r_param_color_t{0, 0, 1}));
  EXPECT_EQ(drawnWith("Size", std::numeric_limits<double>::quiet_NaN()), inOrder(10)[9]);
}

TEST(Filter, PassesTheClipAndSaysWhyOnceWhenItCannotDraw) {
  BusyFilter filter;
  const ClipFrame drawn = filter.frame(3);
  for (const auto& [name, text, reason] :
       {std::tuple{"Presets", "comett", "there is no preset \"comett\""},
        {"Scene", "/nowhere/scene.toml", "/nowhere/scene.toml"}}) {
    const std::string before = filter.text(name);
    filter.set(name, text);
    testing::internal::CaptureStderr();
    EXPECT_EQ(filter.frame(3), filter.clip);
    EXPECT_EQ(filter.frame(4), filter.clip);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find(reason), said.npos) << said;
    EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
    filter.set(name, before);
    EXPECT_EQ(filter.frame(3), drawn);
  }
}

/// Frames of a filter that a scene file says all of.
struct SceneFilterTest : FolderTest {
  std::string scene() const { return path("s.toml").string(); }
  void rewrite(const std::string& text, int seconds) const {
    write("s.toml", text);
    std::filesystem::last_write_time(
        scene(), std::filesystem::file_time_type() + std::chrono::seconds(seconds));
  }
  ClipFrame drawn(int frame) const {
    HostedFilter filter(kWidth, kHeight);
    filter.set("Scene", scene());
    return filter.update(frame / kRate, clip);
  }

  ClipFrame clip = patternedFrame(kWidth, kHeight);
};

TEST_F(SceneFilterTest, IsReadAnewWhenItWasEdited) {
  const std::string head = "[scene]\nfps = 25\n";
  rewrite(head, 1);
  HostedFilter filter(kWidth, kHeight);
  filter.set("Scene", scene());
  const ClipFrame before = filter.update(9 / kRate, clip);
  rewrite(head + "[params]\n\"Size\" = 90\n", 2);
  const ClipFrame after = filter.update(9 / kRate, clip);
  EXPECT_NE(after, before);
  EXPECT_EQ(after, drawn(9));

  testing::internal::CaptureStderr();
  rewrite(head + "[params]\n\"Sise\" = 90\n", 3);
  EXPECT_EQ(filter.update(9 / kRate, clip), clip);
  std::filesystem::remove(path("s.toml"));
  EXPECT_EQ(filter.update(9 / kRate, clip), clip);
  EXPECT_EQ(std::ranges::count(testing::internal::GetCapturedStderr(), '\n'), 2);
  rewrite(head, 4);
  EXPECT_EQ(filter.update(9 / kRate, clip), before);
}

TEST_F(SceneFilterTest, TakesEachFrameFromTheOneBeforeAtWhateverRate) {
  const ClipFrame other = patternedFrame(kWidth, kHeight, 2);
  const auto playedAt = [&](const std::string& rate, double perSecond) {
    rewrite("[scene]\nfps = \"" + rate + "\"\n[params]\n\"Color schema\" = \"Source\"\n", 1);
    HostedFilter filter(kWidth, kHeight);
    filter.set("Scene", scene());
    for (int frame = 0; frame < 9; ++frame) filter.update(frame / perSecond, clip);
    return filter.update(9 / perSecond, other);  // in which stars have colors of the clip
  };
  EXPECT_EQ(playedAt("2997/100", 29.97), playedAt("25", 25));
}

TEST_F(SceneFilterTest, DoesNotWaitForPipes) {
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  HostedFilter filter(kWidth, kHeight);
  testing::internal::CaptureStderr();
  for (const std::string& scene : {path("pipe").string(), folder()}) {
    filter.set("Scene", scene);
    EXPECT_EQ(filter.update(0, clip), clip);
  }
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_NE(said.find("is a device or a pipe"), said.npos) << said;
  EXPECT_NE(said.find("is a folder"), said.npos) << said;
}

TEST(Filter, AnswersTextsThatItCannotReadAndGoesOn) {
  BusyFilter filter;
  testing::internal::CaptureStderr();
  filter.set("Standard path", "Circel").set("Frames per second", "fast");
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_NE(said.find("\"Standard path\" has no item \"Circel\""), said.npos) << said;
  EXPECT_NE(said.find("\"Frames per second\" takes a number"), said.npos) << said;
  EXPECT_EQ(filter.frame(0), inOrder(1)[0]);
}

TEST(Filter, IsUnloadedByWhoeverLoadedIt) {
  const std::string copy = testing::TempDir() + "brisel_unload.so";  // others hold the built one
  std::filesystem::copy_file(FILTER_PATH, copy, std::filesystem::copy_options::overwrite_existing);
  {
    FilterLibrary library(copy.c_str());
    BusyFilter(library).frame(2);
  }
  EXPECT_EQ(dlopen(copy.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
  std::filesystem::remove(copy);
}

}  // namespace
