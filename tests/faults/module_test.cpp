// Every call of the system that module and filter make fails once, in turn: nothing crashes or is
// left behind, and what comes after is as if nothing had happened.
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>

#include "tests/faults/failing_calls.h"
#include "tests/frei0r/small_host.h"
#include "tests/plugin/panel_fixture.h"

namespace {

using hostkit::Session;
using hostkit::World;
using tests::renderFrame;

struct Failure {
  std::string calls;
  int error;  // 0: comes short

  bool isOfMemory() const { return error == ENOMEM; }
};

const std::vector<Failure> kFailures = {
    {"new", ENOMEM},          {"mmap", ENOMEM},     {"pthread_create", EAGAIN},
    {"open fstat read", EIO}, {"open read", EINTR}, {"read", 0}};

/// Calls `play` with each failure at each call until none is left to fail. `play` begins what is to
/// fail with startFailing() and ends it with tests::endFailing().
class Faults : public ::testing::Test {
 protected:
  template <class Play>
  void failEach(const std::string& library, const Play& play) {
    play();  // undisturbed, and so that what is made once is there
    for (const Failure& failure : kFailures) {
      failure_ = &failure;
      library_ = library;
      fired_ = true;
      for (nth_ = 1; fired_; ++nth_) {
        SCOPED_TRACE(failure.calls + " " + std::to_string(nth_) + ": errno " +
                     std::to_string(failure.error));
        const auto open = openFiles();
        const auto mapped = tests::mappedBytes();
        fired_ = false;
        play();
        EXPECT_EQ(openFiles(), open);
        EXPECT_EQ(tests::mappedBytes(), mapped);
        failures_ += fired_;
        if (HasFailure()) return;
      }
    }
    failure_ = nullptr;
    std::printf("%d calls failed\n", failures_);
    EXPECT_GT(failures_, 10);
  }

  void startFailing() {
    if (failure_ != nullptr) tests::failCall(failure_->calls, nth_, failure_->error, library_);
  }
  void endFailing() { fired_ = tests::endFailing(); }
  /// Of the play that is going on; null when it is undisturbed.
  const Failure* failure() const { return failure_; }

 private:
  static std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  }

  const Failure* failure_ = nullptr;
  std::string library_;
  int nth_ = 0;
  bool fired_ = false;
  int failures_ = 0;
};

class ModuleFaults : public Faults {
 protected:
  ModuleFaults() : module(hostkit::Module::load(beside_.module())) {
    setenv("PATH", "", 1);  // a click on the header opens nothing
  }

  void failEachCall(const std::function<void(Session&)>& play) {
    failEach(beside_.module().string(), [&] {
      Session session(module);
      play(session);
      session.close();
      const hostkit::HostRecords& records = session.records();
      EXPECT_EQ(records.handles.liveHandles(), 0);
      EXPECT_TRUE(records.handles.balanced() && records.suites.balanced());
      EXPECT_TRUE(records.masks.balanced() && records.pane.balanced());
    });
  }

  /// Bytes that are the same each time that this is reached.
  void expectTheSame(std::string& expected, const std::string& bytes) {
    if (failure() == nullptr) expected = bytes;
    EXPECT_TRUE(bytes == expected)
        << bytes.size() << " bytes are not as in an undisturbed run, " << expected.size();
  }

 private:
  const tests::ModuleWithPresets beside_;

 protected:
  const hostkit::Module module;
};

std::string framesOf(Session& session, const tests::FrameShape& shape,
                     const std::vector<A_long>& frames) {
  std::string bytes;
  for (const A_long frame : frames) {
    const World world = renderFrame(session, shape, frame);
    bytes.append(world.bytes().begin(), world.bytes().end());
  }
  return bytes;
}

/// Both rows and the header, as they are drawn.
std::string drawn(Session& session) {
  tests::RecordingPainter painter;
  session.draw(tests::kHeader, tests::kHeaderRect, &painter);
  session.draw(tests::kEmitterRow, tests::kRowRect, &painter);
  session.draw(tests::kStarRow, tests::kRowRect, &painter);
  std::string bytes;
  for (const tests::Drawing& drawing : painter.drawings) {
    bytes.append(reinterpret_cast<const char*>(&drawing.rect), sizeof drawing.rect);
    bytes.append(drawing.image.pixels.begin(), drawing.image.pixels.end());
  }
  return bytes;
}

TEST_F(ModuleFaults, SetUpAndSetDownAreSilent) {
  std::string frames, panel;
  failEachCall([&](Session& session) {
    startFailing();
    session.open();
    session.flatten();
    session.resetup();
    session.close();
    session.open();
    endFailing();
    session.parameters().resetToDefaults(64, 48);
    expectTheSame(frames, framesOf(session, {}, {0, 1}));
    session.close();
    session.open();
    session.parameters().resetToDefaults(64, 48);
    expectTheSame(panel, drawn(session));
  });
}

TEST_F(ModuleFaults, EventsAreSilentAndSetAWholePresetOrNone) {
  std::string panel;
  failEachCall([&](Session& session) {
    tests::openWithDefaults(session);
    session.setLayerSize(64, 48);
    const auto number = [&] {
      return session.parameters().value(tests::indexOf(session, "Intensity")).u.fd.value >> 16;
    };
    const auto start = [&] {
      return session.parameters().value(tests::indexOf(session, "Start")).u.td.x_value >> 16;
    };
    const auto before = std::pair(number(), start());
    const auto clickCell = [&] {
      session.click(tests::kEmitterRow, tests::kRowRect, {tests::kStripLeft + 94 * 2 + 40, 440});
    };
    startFailing();
    drawn(session);
    session.hover(tests::kEmitterRow, tests::kRowRect, {tests::kStripLeft + 40, 440});
    clickCell();
    session.click(tests::kHeader, tests::kHeaderRect, {90, 270});
    session.updateParamsUI();
    endFailing();
    const auto after = std::pair(number(), start());
    const auto preset = std::pair(22, 16);
    EXPECT_TRUE(after == preset || after == before) << after.first << ' ' << after.second;
    clickCell();
    EXPECT_EQ(std::pair(number(), start()), preset);
    expectTheSame(panel, drawn(session));
  });
}

struct Look {
  std::string name;
  std::vector<std::pair<std::string, double>> values;
  bool isPrograms = false;  // state and threads as the command line has them
  bool hasMask = false;
};

class RenderFaults : public ModuleFaults, public ::testing::WithParamInterface<Look> {};

// Without memory a frame is empty, but its step is taken; a source or the room for more stars may
// be done without, but a program is told of all of that.
TEST_P(RenderFaults, TheNextFramesAreThoseOfAnUndisturbedRun) {
  const Look& look = GetParam();
  const tests::FrameShape shape{.depth = hostkit::Depth::Bits16};
  std::string disturbed, next, again;
  failEachCall([&](Session& session) {
    tests::openWithDefaults(session, shape);
    for (const auto& [label, value] : look.values) tests::set(session, label, value);
    if (look.hasMask) {
      hostkit::MaskShape triangle{
          {{9, 9, 9, 9, 9, 9}, {50, 9, 50, 9, 50, 9}, {9, 40, 9, 40, 9, 40}}, true};
      const auto id =
          session.records().masks.add([triangle](const hostkit::MaskTime&) { return triangle; });
      session.parameters().setPath(tests::indexOf(session, "Path"), id);
    }
    if (look.isPrograms) session.useOwnState();
    session.usePainting(look.isPrograms ? 3 : 1);  // a painter that has no memory yet
    startFailing();
    bool wasLost = false;
    std::optional<World> frame;
    try {
      if (look.isPrograms) session.usePainting(2);
      frame = renderFrame(session, shape, 0);
    } catch (const hostkit::Error& error) {
      wasLost = true;
      EXPECT_NE(std::string(error.what()).find("memory"), std::string::npos) << error.what();
    }
    endFailing();
    EXPECT_TRUE(!wasLost || (look.isPrograms && failure()->isOfMemory())) << "said to a host";
    const bool isOfSources = look.name != "rays";
    const bool hasAllStars = failure() == nullptr || (failure()->calls != "mmap" && !isOfSources);
    if (frame && (look.isPrograms || hasAllStars)) {
      if (look.isPrograms || !tests::isBlank(*frame)) {
        expectTheSame(disturbed, {frame->bytes().begin(), frame->bytes().end()});
      }
      expectTheSame(next, framesOf(session, shape, {1}));
    }
    expectTheSame(again, framesOf(session, shape, {0, 1}));
    session.restoreState(session.saveState());  // which a state in use refuses
  });
}

const std::vector<std::pair<std::string, double>> kManySprites = {
    {"Intensity", 400}, {"Size", 90}, {"Rays count", 9}, {"Type of halo", 2}, {"Type of blink", 2}};

std::vector<std::pair<std::string, double>> withPath(double path) {
  return {{"Standard path", path}, {"Maximum number of stars", 50}};
}

INSTANTIATE_TEST_SUITE_P(
    All, RenderFaults,
    ::testing::Values(Look{"rays", kManySprites}, Look{"program", kManySprites, true},
                      Look{"brightness", withPath(6)}, Look{"outline", withPath(8)},
                      Look{"mask", {}, false, true}, Look{"program_brightness", withPath(6), true},
                      Look{"program_outline", withPath(8), true},
                      Look{"program_mask", {}, true, true}),
    [](const auto& look) { return look.param.name; });

TEST_F(Faults, TheFilterGoesOnWithTheNextFrame) {
  const tests::TemporaryFolder folder;
  const std::string scene = folder.path() / "s.toml";
  std::ofstream(scene) << "[scene]\nframes = 9\n[params]\n\"Rays count\" = 7\n[[layer]]\n"
                          "[[layer]]\npresets = [\"comet\"]\n";
  const tests::ClipFrame clip = tests::patternedFrame(64, 36);
  std::vector<tests::ClipFrame> expected;
  std::string saved;
  failEach("brisel.so", [&] {
    std::unique_ptr<tests::HostedFilter> filter;
    const auto set = [&] {
      filter->set("Scene", scene).set("Presets", "fireworks").set("Size", 0.3);
    };
    startFailing();
    try {
      filter = std::make_unique<tests::HostedFilter>(64, 36);
      set();
      for (int frame = 0; frame < 3; ++frame) filter->update(frame / 25.0, clip);
    } catch (const std::runtime_error&) {  // no instance, which a host is told
    }
    endFailing();
    if (filter == nullptr) filter = std::make_unique<tests::HostedFilter>(64, 36);
    set();
    for (std::size_t frame = 2; frame < 5; ++frame) {
      const auto shown = filter->update(static_cast<double>(frame) / 25.0, clip);
      if (failure() == nullptr) expected.push_back(shown);
      EXPECT_TRUE(shown == expected[frame - 2]) << "frame " << frame;
    }
  });
}

}  // namespace
