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
  if (event->type() == QEvent::ApplicationDeactivate) hold(false);  // the release goes elsewhere
  const bool isPress = event->type() == QEvent::KeyPress;
  if (!(isPress || event->type() == QEvent::KeyRelease) || !watched->isWidgetType()) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != key_) return false;
  if (!isHeld_) {
    const bool isWriting = qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr;
    if (!isPress || isWriting || key->modifiers() != Qt::NoModifier) return false;
  }
  if (!key->isAutoRepeat()) hold(isPress);
  return true;
}

void CompareKey::hold(bool held) {
  if (held == isHeld_) return;
  isHeld_ = held;
  preview_.compare(held ? preview_.document().stateBeforeLastStep() : nullptr);
}

}  // namespace desk
