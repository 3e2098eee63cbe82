#include <QDockWidget>
#include <QMenu>
#include <QScreen>
#include <QScrollArea>

#include "desk/compare/snapshots_panel.h"
#include "desk/controls/controls_panel.h"
#include "desk/controls/effect_panel.h"
#include "desk/controls/presets_panel.h"
#include "desk/exporting/exports_panel.h"
#include "desk/layers/layers_panel.h"
#include "desk/window/main_window.h"

namespace desk {
namespace {

constexpr QSize kWindowSize{1440, 900};  // at first

}  // namespace

void MainWindow::addPanels() {
  QDockWidget* timeline = addPanel(Qt::BottomDockWidgetArea, "Timeline", "timeline", timeline_);
  auto* effect = new QScrollArea;  // its rows are as wide as a host's window
  effect->setAccessibleName("The effect's own controls");
  effect->setWidgetResizable(true);
  effect->setWidget(new EffectPanel(preview_));
  tabifyDockWidget(timeline, addPanel(Qt::BottomDockWidgetArea, "Effect", "effect", effect));
  timeline->raise();
  QDockWidget* controls =
      addPanel(Qt::RightDockWidgetArea, "Controls", "controls", new ControlsPanel(preview_));
  QDockWidget* presets =
      addPanel(Qt::LeftDockWidgetArea, "Presets", "presets", new PresetsPanel(preview_));
  addPanel(Qt::LeftDockWidgetArea, "Layers", "layers", new LayersPanel(preview_));
  QDockWidget* exports =
      addPanel(Qt::LeftDockWidgetArea, "Exports", "exports", new ExportsPanel(exports_));
  QDockWidget* snapshots =
      addPanel(Qt::LeftDockWidgetArea, "Snapshots", "snapshots", new SnapshotsPanel(preview_));
  tabifyDockWidget(presets, snapshots);
  tabifyDockWidget(presets, exports);
  presets->raise();
  constexpr int kControlsWidth = 520;  // pixels, at first: names and what they are turned by
  constexpr int kPresetsWidth = 240;   // three thumbnails
  resize(kWindowSize.boundedTo(screen()->availableSize()));
  resizeDocks({controls, presets}, {kControlsWidth, kPresetsWidth}, Qt::Horizontal);
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
