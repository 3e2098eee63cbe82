// The custom controls of a copy of the module, with presets of the test's own next to it.
#pragma once

#include <filesystem>
#include <vector>

#include "tests/plugin/hosted_effect.h"
#include "tests/plugin/module_with_presets.h"
#include "tests/plugin/recording_painter.h"

namespace tests {

inline constexpr PF_ParamIndex kHeader = 1, kEmitterRow = 3, kStarRow = 38;
// Off the origin, so that no offset is lost. The row's strip is 400 pixels wide: five cells, the
// last of them cut off.
inline constexpr PF_Rect kHeaderRect{30, 200, 500, 325};
inline constexpr PF_Rect kRowRect{30, 400, 478, 475};
inline constexpr A_long kStripLeft = 54;

class PanelTest : public ::testing::Test {
 protected:
  PanelTest() : module_(hostkit::Module::load(beside_.module())), session(module_) {
    session.open();
    session.parameters().resetToDefaults(1920, 1080);
    session.setLayerSize(1920, 1080);
  }
  ~PanelTest() override {
    session.close();
    EXPECT_TRUE(session.records().pane.balanced());
    EXPECT_TRUE(session.records().suites.balanced());
    EXPECT_TRUE(session.records().handles.balanced());
    EXPECT_EQ(session.records().wrongEffectRefs, 0);
  }

  std::vector<Drawing> drawn(PF_ParamIndex index, const PF_Rect& rect) {
    RecordingPainter painter;
    const hostkit::EventReport report = session.draw(index, rect, &painter);
    EXPECT_EQ(report.eventFlags, PF_EO_HANDLED_EVENT);
    return painter.drawings;
  }
  hostkit::EventReport clickRow(A_long x) { return session.click(kEmitterRow, kRowRect, {x, 440}); }
  hostkit::EventReport clickCell(int cell) { return clickRow(kStripLeft + 94 * cell + 40); }
  double number(std::string_view label) {
    return session.parameters().value(indexOf(session, label)).u.fd.value / 65536.0;
  }

  const std::filesystem::path& folder() const { return beside_.folder(); }

 private:
  ModuleWithPresets beside_;
  hostkit::Module module_;

 protected:
  hostkit::Session session;
};

}  // namespace tests
