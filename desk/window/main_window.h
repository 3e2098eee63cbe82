// The window: the picture in its middle, panels around it, and the commands of its menus.
#pragma once

#include <QMainWindow>
#include <functional>

#include "desk/document/scene_document.h"
#include "desk/exporting/export_memory.h"
#include "desk/exporting/export_queue.h"
#include "desk/render/preview.h"
#include "desk/timeline/timeline_panel.h"
#include "desk/view/picture_view.h"
#include "desk/window/message_area.h"

class QActionGroup;

namespace desk {

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(scene::PresetLibrary presets);

  /// False where the scene cannot be read, which a message tells.
  bool open(const QString& path);
  /// Asks what becomes of unsaved changes; false when the person would rather stay.
  bool mayLeaveScene();

  SceneDocument& document() { return document_; }
  Preview& preview() { return preview_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  // In main_window_menus.cpp.
  QAction* command(QMenu* menu, const QString& text, const QKeySequence& keys,
                   std::function<void()> act);
  /// One of `group`, of which one is checked.
  QAction* choice(QMenu* menu, QActionGroup* group, const QString& text, const QKeySequence& keys,
                  std::function<void()> act);
  QAction* toggle(QMenu* menu, const QString& text, const QKeySequence& keys, bool on,
                  std::function<void(bool)> act);
  void addFileMenu();
  void addEditMenu();
  void addViewMenu();
  void addTimelineMenus();
  void addHelpMenu();

  // In main_window_files.cpp.
  void takeDrops();
  void takeFiles(const QList<QUrl>& urls);
  void addRecentMenu();
  void keepRecent() const;

  // In panels.cpp: what stands around the picture.
  void addPanels();
  /// `name` is what the window's state is kept by.
  QDockWidget* addPanel(Qt::DockWidgetArea area, const QString& title, const char* name,
                        QWidget* widget);

  void addStatus();
  bool mayLeaveExports();
  void startNew(const QString& preset = {});
  void openByDialog();
  void chooseInput();
  bool save();
  bool saveAs();
  void exportScene();
  void tellMessages();
  void offerRecovered(const std::optional<Recovered>& lost);
  std::vector<MessageArea::Answer> answersToRefusal();
  void showTitle();
  void restoreState();
  void keepState() const;

  SceneDocument document_;
  Preview preview_;
  ExportQueue exports_;
  ExportMemory exportMemory_;
  MessageArea* messages_;
  PictureView* view_;
  TimelinePanel* timeline_;
  QMenu* fileMenu_ = nullptr;
  QMenu* recentMenu_ = nullptr;
  QMenu* editMenu_ = nullptr;
  QMenu* viewMenu_ = nullptr;
  QMenu* panelMenu_ = nullptr;  // which of them are shown
};

}  // namespace desk
