#include "desk/compare/compare_key.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace desk {

CompareKey::CompareKey(Preview& preview, Qt::Key key, QObject* parent)
    : QObject(parent), preview_(preview), key_(key) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool CompareKey::eventFilter(QObject* watched, QEvent* event) {
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  if (!isKey || !watched->isWidgetType()) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != key_ || key->modifiers() != Qt::NoModifier) return false;
  if (qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr && !isHeld_) return false;
  if (key->isAutoRepeat()) return true;
  isHeld_ = event->type() == QEvent::KeyPress;
  preview_.compare(isHeld_ ? preview_.document().stateBeforeLastStep() : nullptr);
  return true;
}

}  // namespace desk
