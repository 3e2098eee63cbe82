// Files dropped on a window.
#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

class QMainWindow;

namespace desk {

/// On any part of it, fields that would take their names as text among them, and on its panels that
/// float. An event filter of the application; belongs to the window.
class FileDrops : public QObject {
  Q_OBJECT

 public:
  explicit FileDrops(QMainWindow& window);  // which has all its panels

 signals:
  /// One or more.
  void dropped(const QList<QUrl>& urls);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace desk
