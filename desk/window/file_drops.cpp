#include "desk/window/file_drops.h"

#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QDropEvent>
#include <QMainWindow>
#include <QMimeData>

namespace desk {
namespace {

/// Dialogs are none, nor is anything while one of them waits for an answer.
bool isPartOf(const QWidget* widget, const QObject* window) {
  if (QApplication::activeModalWidget() != nullptr) return false;
  while (widget && widget != window && !qobject_cast<const QDialog*>(widget)) {
    widget = widget->parentWidget();
  }
  return widget && widget == window;
}

}  // namespace

FileDrops::FileDrops(QMainWindow& window) : QObject(&window) {
  window.setAcceptDrops(true);
  for (auto* panel : window.findChildren<QDockWidget*>()) panel->setAcceptDrops(true);
  QCoreApplication::instance()->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
  if (!isPartOf(qobject_cast<QWidget*>(watched), parent())) return false;
  auto* drag = static_cast<QDropEvent*>(event);
  const QList<QUrl> urls = drag->mimeData()->urls();
  if (urls.isEmpty()) return false;
  drag->setDropAction(Qt::CopyAction);  // they stay where they are
  drag->accept();
  if (type == QEvent::Drop) emit dropped(urls);
  return true;
}

}  // namespace desk
