// The rows of presets, drawn, hovered and clicked by a host.
#include <cstring>
#include <functional>

#include "tests/plugin/panel_fixture.h"

namespace {

using tests::Drawing;
using tests::expectBox;
using tests::expectImage;
using tests::kEmitterRow;
using tests::kHeader;
using tests::kHeaderRect;
using tests::kRowRect;
using tests::kStarRow;
using tests::kStripLeft;
using tests::PanelTest;
using tests::RecordingPainter;

constexpr DRAWBOT_ColorRGBA kNormalFill{1.0f, 1.0f, 0.25f, 1.0f};
constexpr DRAWBOT_ColorRGBA kNormalStroke{1.0f, 1.0f, 0.5f, 1.0f};
constexpr DRAWBOT_ColorRGBA kDisabledFill{1.0f, 0.7529412f, 0.1254902f, 1.0f};
constexpr DRAWBOT_ColorRGBA kDisabledStroke{1.0f, 1.0f, 0.5f, 0.5f};
constexpr DRAWBOT_ColorRGBA kPressedFill{0.0f, 0.8235294f, 1.0f, 1.0f};
constexpr DRAWBOT_ColorRGBA kPressedStroke{0.25f, 0.1f, 0.5f, 1.0f};

// The red of a pixel of the strip; thumbnail i is gray of level i.
int stripRed(const Drawing& strip, int x, int y) {
  const int at = 3 * (y * strip.image.width + x);
  return strip.image.pixels[static_cast<std::size_t>(at)];
}

TEST_F(PanelTest, ARowDrawsItsFrameArrowsAndThumbnails) {
  const std::vector<Drawing> row = drawn(kEmitterRow, kRowRect);
  ASSERT_EQ(row.size(), 9u);
  expectBox(row[0], row[1], {30, 400, 447, 74}, {1.0f, 0.5f, 0.0f, 1.0f}, {1.0f, 0.0f, 0.0f, 1.0f});
  expectBox(row[2], row[3], {32, 402, 19, 70}, kDisabledFill, kDisabledStroke);
  expectImage(row[4], {33, 412, 16, 50}, 0.5f);
  expectBox(row[5], row[6], {456, 402, 19, 70}, kNormalFill, kNormalStroke);
  expectImage(row[7], {457, 412, 16, 50}, 1.0f);
  expectImage(row[8], {kStripLeft, 402, 400, 71}, 1.0f);
  EXPECT_EQ(stripRed(row[8], 0, 0), 100);
  for (int cell = 0; cell < 5; ++cell) EXPECT_EQ(stripRed(row[8], 94 * cell + 3, 3), cell);
  EXPECT_EQ(stripRed(row[8], 3, 2), 100);
  EXPECT_EQ(stripRed(row[8], 3, 67), 0);
  EXPECT_EQ(stripRed(row[8], 3, 68), 100);
}

// A render on another thread seals the state once it has changed it.
TEST_F(PanelTest, AnEventLeavesTheSealOfTheStateAlone) {
  class Render : public RecordingPainter {
   public:
    explicit Render(hostkit::Session& session) : session_(session) {}
    void fillRect(const DRAWBOT_RectF32&, const DRAWBOT_ColorRGBA&) override {
      auto* record = static_cast<tests::InstanceRecord*>(*session_.inData().sequence_data);
      ++record->stepCounter;
    }

   private:
    hostkit::Session& session_;
  };
  const tests::InstanceRecord before = tests::instanceRecord(session);
  Render render(session);
  session.draw(kEmitterRow, kRowRect, &render);
  const tests::InstanceRecord after = tests::instanceRecord(session);
  EXPECT_GT(after.stepCounter, before.stepCounter);
  EXPECT_EQ(after.seal, before.seal);
  static_cast<tests::InstanceRecord*>(*session.inData().sequence_data)->stepCounter =
      before.stepCounter;
}

#ifndef _WIN32
TEST(PanelBehindALink, ShowsThePresetsBesideTheFileThatTheLinkLeadsTo) {
  const tests::ModuleWithPresets beside;
  std::filesystem::rename(beside.module(), beside.folder() / "effect.so.2");
  std::filesystem::create_directory(beside.folder() / "links");
  const auto link = beside.folder() / "links/VellixDrizzen_64.AEX";
  std::filesystem::create_symlink("../effect.so.2", link);
  const hostkit::Module module(hostkit::Module::load(link));
  hostkit::Session session(module);
  session.open();
  RecordingPainter painter;
  session.draw(kEmitterRow, kRowRect, &painter);
  EXPECT_EQ(painter.drawings.size(), 9u);
  session.close();
}
#endif

TEST_F(PanelTest, ScrollingStopsAtBothEnds) {
  drawn(kEmitterRow, kRowRect);
  for (int i = 0; i < 10; ++i) clickRow(457);
  std::vector<Drawing> row = drawn(kEmitterRow, kRowRect);
  ASSERT_EQ(row.size(), 9u);
  expectBox(row[2], row[3], {32, 402, 19, 70}, kNormalFill, kNormalStroke);
  expectBox(row[5], row[6], {456, 402, 19, 70}, kDisabledFill, kDisabledStroke);
  EXPECT_EQ(stripRed(row[8], 0, 20), 5);  // cut off on the left: its cell begins at -70
  EXPECT_EQ(stripRed(row[8], 400 - 94 + 3, 20), 9);
  clickRow(kStripLeft + 30);  // past the first cell, which ends at 24
  EXPECT_EQ(number("Intensity"), 26.0);
  clickRow(40);
  row = drawn(kEmitterRow, kRowRect);
  expectBox(row[2], row[3], {32, 402, 19, 70}, kPressedFill, kPressedStroke);
  EXPECT_EQ(stripRed(row[8], 3, 20), 5);
  for (int i = 0; i < 20; ++i) clickRow(40);
  row = drawn(kEmitterRow, kRowRect);
  expectBox(row[2], row[3], {32, 402, 19, 70}, kDisabledFill, kDisabledStroke);
  EXPECT_EQ(stripRed(row[8], 3, 20), 0);
  clickRow(kStripLeft + 94 * 4 + 10);  // the one that is cut off, short of the arrow
  EXPECT_EQ(stripRed(drawn(kEmitterRow, kRowRect)[8], 3, 20), 1);
}

TEST_F(PanelTest, AClickAppliesThePreset) {
  session.draw(kEmitterRow, kRowRect, nullptr);
  EXPECT_EQ(clickCell(2).outFlags, 0) << "nothing to be seen, nothing to be hit";
  drawn(kEmitterRow, kRowRect);
  const hostkit::EventReport report = clickCell(2);
  EXPECT_EQ(report.eventFlags, PF_EO_HANDLED_EVENT | PF_EO_UPDATE_NOW);
  EXPECT_EQ(report.outFlags, PF_OutFlag_REFRESH_UI);
  EXPECT_EQ(number("Intensity"), 22.0);
  const PF_PointDef& start = session.parameters().value(tests::indexOf(session, "Start")).u.td;
  EXPECT_EQ(start.x_value, 480 << 16);
  EXPECT_EQ(start.y_value, 540 << 16);
  // Not the rainbow, which has that value already; the header, so that the host notices.
  EXPECT_EQ(report.changed, (std::vector<PF_ParamIndex>{kHeader, tests::indexOf(session, "Start"),
                                                        tests::indexOf(session, "Intensity")}));
  ASSERT_EQ(report.invalidated.size(), 1u);
  EXPECT_EQ(std::memcmp(&*report.invalidated[0], &kRowRect, sizeof kRowRect), 0);

  EXPECT_EQ(session.click(kEmitterRow, kRowRect, {kStripLeft + 40, 480}).outFlags, 0);
  session.draw(kStarRow, kRowRect, nullptr);
  EXPECT_EQ(drawn(kStarRow, kRowRect).size(), 9u);  // one entry, without image or file
  const PF_Point first{kStripLeft + 40, 440}, second{kStripLeft + 134, 440};
  EXPECT_EQ(session.click(kStarRow, kRowRect, first).outFlags, 0);
  EXPECT_EQ(session.click(kStarRow, kRowRect, second).outFlags, 0);
  EXPECT_EQ(number("Intensity"), 22.0);
}

TEST_F(PanelTest, HoveringHighlightsTheEntryUnderThePointer) {
  drawn(kEmitterRow, kRowRect);
  const auto hover = [&](PF_Point at) { return session.hover(kEmitterRow, kRowRect, at); };
  EXPECT_EQ(hover({kStripLeft + 94 * 2, 440}).eventFlags, PF_EO_HANDLED_EVENT | PF_EO_UPDATE_NOW);
  const Drawing strip = drawn(kEmitterRow, kRowRect)[8];
  EXPECT_EQ(stripRed(strip, 94 * 2, 0), 255);
  EXPECT_EQ(stripRed(strip, 94 * 2 + 3, 2), 2);  // raised by a pixel
  EXPECT_EQ(stripRed(strip, 94 * 1, 0), 100);
  hover({kStripLeft + 94 * 2, 401});  // above the strip
  EXPECT_EQ(stripRed(drawn(kEmitterRow, kRowRect)[8], 94 * 2, 0), 100);

  PF_EventExtra titled = session.event(PF_Event_ADJUST_CURSOR, kEmitterRow, kRowRect);
  titled.effect_win.param_title_frame.top = kRowRect.top;
  EXPECT_EQ(session.send(titled).eventFlags, 0);
}

TEST_F(PanelTest, EventsThatDoNotConcernItAreIgnored) {
  const auto ignored = [&](const std::function<void(PF_EventExtra&)>& spoil) {
    RecordingPainter painter;
    PF_EventExtra event = session.event(PF_Event_DRAW, kEmitterRow, kRowRect);
    event.u.draw.update_rect = kRowRect;
    spoil(event);
    const hostkit::EventReport report = session.send(event, &painter);
    return report.eventFlags == 0 && painter.drawings.empty();
  };
  PF_Context composition{};
  PF_Context* context = &composition;
  EXPECT_FALSE(ignored([](PF_EventExtra&) {}));
  EXPECT_TRUE(ignored([&](PF_EventExtra& e) { e.contextH = &context; }));
  EXPECT_TRUE(ignored([](PF_EventExtra& e) { e.contextH = nullptr; }));
  EXPECT_TRUE(ignored([](PF_EventExtra& e) { e.effect_win.index = 2; }));
  EXPECT_TRUE(ignored([](PF_EventExtra& e) { e.effect_win.area = PF_EA_PARAM_TITLE; }));
  EXPECT_TRUE(ignored([](PF_EventExtra& e) { e.evt_in_flags = PF_EI_DONT_DRAW; }));
  EXPECT_TRUE(ignored([](PF_EventExtra& e) { e.e_type = PF_Event_IDLE; }));
  EXPECT_TRUE(ignored([&](PF_EventExtra&) {
    session.parameters().value(kEmitterRow).flags |= PF_ParamFlag_COLLAPSE_TWIRLY;
  }));
}

// Fails each of the host's calls in turn, and each acquisition of a suite.
TEST_F(PanelTest, EverythingIsGivenBackWhateverFails) {
  hostkit::HostRecords& host = session.records();
  const std::vector<std::function<void()>> events = {
      [&] { drawn(kHeader, kHeaderRect); },
      [&] { drawn(kEmitterRow, kRowRect); },
      [&] { clickCell(1); },
      [&] {
        session.hover(kEmitterRow, kRowRect, {kStripLeft, 440});
      },
  };
  for (const auto& event : events) {
    host.pane.failCall(0);
    host.suites.refuseAcquisition(0);
    const int calls = host.pane.calls();
    const int acquisitions = host.suites.acquisitions();
    event();
    const int callsPerEvent = host.pane.calls() - calls;
    const int acquisitionsPerEvent = host.suites.acquisitions() - acquisitions;
    for (int n = 1; n <= callsPerEvent; ++n) {
      host.pane.failCall(n);
      EXPECT_THROW(event(), hostkit::Error) << "call " << n;
      EXPECT_TRUE(host.pane.balanced() && host.suites.balanced()) << "call " << n;
    }
    host.pane.failCall(0);
    for (int n = 1; n <= acquisitionsPerEvent; ++n) {
      host.suites.refuseAcquisition(n);
      try {
        event();
        EXPECT_EQ(n, 1) << "only a click does without a suite: that of the parameters";
      } catch (const hostkit::Error& error) {
        EXPECT_NE(std::string(error.what()).find("Not able to acquire AEFX Suite."),
                  std::string::npos)
            << error.what();
      }
      EXPECT_TRUE(host.pane.balanced() && host.suites.balanced()) << "acquisition " << n;
    }
  }
  host.suites.refuseAcquisition(0);
}

}  // namespace
