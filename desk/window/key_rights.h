// Who gets a key that is both a command's shortcut and of use to the widget with the focus.
#pragma once

#include <QObject>

namespace desk {

/// Space, arrows, Home, End and letters play and step through the frames, wherever the focus is,
/// but where a widget needs the key itself: a slider its arrows, a checkbox its space, a list its
/// letters. Undo and redo are the document's even in a number being edited. One object for the
/// application, whose event filter it is.
class KeyRights : public QObject {
  Q_OBJECT

 public:
  explicit KeyRights(QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace desk
