// The timeline: what plays, and the keys of the layer shown.
#pragma once

#include <QAction>
#include <QWidget>
#include <functional>

#include "desk/timeline/key_view.h"
#include "desk/timeline/playback.h"

class QLabel;
class QMenu;
class QToolBar;

namespace desk {

class TimelinePanel : public QWidget {
  Q_OBJECT

 public:
  explicit TimelinePanel(Preview& preview, QWidget* parent = nullptr);

  Playback& playback() { return playback_; }

  /// What the panel does, with its shortcuts, for the window's menus.
  void fillPlayMenu(QMenu& menu) const;
  void fillKeyMenu(QMenu& menu) const;

 private:
  QAction* action(const QString& text, const QList<QKeySequence>& keys, std::function<void()> act);
  void addPlayActions();
  void addKeyActions();
  void addTools();
  void showRate(QLabel& label) const;

  Preview& preview_;
  Playback playback_;
  KeyView* keys_;
  QAction* play_ = nullptr;
  QAction* loop_ = nullptr;
  QAction* start_ = nullptr;
  QAction* end_ = nullptr;
  QList<QAction*> playActions_;  // null: a separator
  QList<QAction*> keyActions_;
  QMenu* eases_;
};

}  // namespace desk
