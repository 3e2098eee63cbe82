#include <QDockWidget>
#include <QLayout>
#include <QMenu>
#include <QScreen>
#include <QScrollArea>
#include <algorithm>

#include "desk/compare/snapshots_panel.h"
#include "desk/controls/controls_panel.h"
#include "desk/controls/effect_panel.h"
#include "desk/controls/presets_panel.h"
#include "desk/exporting/exports_panel.h"
#include "desk/layers/layers_panel.h"
#include "desk/window/main_window.h"

namespace desk {
namespace {

// At first, in pixels.
constexpr QSize kWindowSize{1440, 900};
constexpr QSize kFrame{16, 48};      // more than window managers put around it
constexpr QSize kRoomy{1200, 700};   // where panels on both sides leave the picture enough
constexpr int kControlsWidth = 520;  // names and what they are turned by
constexpr int kPresetsWidth = 240;   // three thumbnails
constexpr int kMostShare = 60;       // of the window's width that panels on one side take, percent

}  // namespace

void MainWindow::addPanels() {
  QDockWidget* timeline = addPanel(Qt::BottomDockWidgetArea, "Timeline", "timeline", timeline_);
  auto* effect = new QScrollArea;  // its rows are as wide as a host's window
  effect->setAccessibleName("The effect's own controls");
  effect->setWidgetResizable(true);
  effect->setWidget(new EffectPanel(preview_));
  tabifyDockWidget(timeline, addPanel(Qt::BottomDockWidgetArea, "Effect", "effect", effect));
  timeline->raise();
  const QSize size = kWindowSize.boundedTo(screen()->availableSize() - kFrame);
  const bool isWide = size.width() >= kRoomy.width();
  const auto otherSide = isWide ? Qt::LeftDockWidgetArea : Qt::RightDockWidgetArea;
  QDockWidget* controls =
      addPanel(Qt::RightDockWidgetArea, "Controls", "controls", new ControlsPanel(preview_));
  QDockWidget* presets = addPanel(otherSide, "Presets", "presets", new PresetsPanel(preview_));
  QDockWidget* layers = addPanel(otherSide, "Layers", "layers", new LayersPanel(preview_));
  QDockWidget* exports = addPanel(otherSide, "Exports", "exports", new ExportsPanel(exports_));
  QDockWidget* snapshots =
      addPanel(otherSide, "Snapshots", "snapshots", new SnapshotsPanel(preview_));
  // Where there is little room, they lie behind each other.
  if (!isWide) tabifyDockWidget(controls, presets);
  if (!isWide || size.height() < kRoomy.height()) tabifyDockWidget(presets, layers);
  tabifyDockWidget(presets, snapshots);
  tabifyDockWidget(presets, exports);
  (isWide ? presets : controls)->raise();
  layout()->activate();  // which knows no tabs yet, and would not let the window be as small
  resize(size);
  resizeDocks({controls}, {std::min(kControlsWidth, size.width() * kMostShare / 100)},
              Qt::Horizontal);
  if (isWide) resizeDocks({presets}, {kPresetsWidth}, Qt::Horizontal);
  panelMenu_->addSeparator();
  panelMenu_->addAction("As at &first", this,
                        [this, atFirst = saveState()] { QMainWindow::restoreState(atFirst); });
  connect(&exports_, &ExportQueue::rowsInserted, exports, [exports] {
    exports->show();
    exports->raise();
  });
}

QDockWidget* MainWindow::addPanel(Qt::DockWidgetArea area, const QString& title, const char* name,
                                  QWidget* widget) {
  auto* dock = new QDockWidget(title, this);
  dock->setObjectName(name);
  dock->setWidget(widget);
  addDockWidget(area, dock);
  panelMenu_->addAction(dock->toggleViewAction());
  return dock;
}

}  // namespace desk
