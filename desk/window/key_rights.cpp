#include "desk/window/key_rights.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabBar>

namespace desk {
namespace {

bool isArrowOrEnd(int key) {
  return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Home || key == Qt::Key_End;
}

bool needs(const QObject* widget, const QKeyEvent& event) {
  const int key = event.key();
  if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
  if (qobject_cast<const QAbstractButton*>(widget) != nullptr) return key == Qt::Key_Space;
  if (qobject_cast<const QAbstractSlider*>(widget) != nullptr) return isArrowOrEnd(key);
  if (qobject_cast<const QTabBar*>(widget) != nullptr) return isArrowOrEnd(key);
  const bool isList = qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
                      qobject_cast<const QComboBox*>(widget) != nullptr;
  return isList && (isArrowOrEnd(key) || key == Qt::Key_Space || !event.text().isEmpty());
}

}  // namespace

KeyRights::KeyRights(QObject* parent) : QObject(parent) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool KeyRights::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride || !watched->isWidgetType()) return false;
  auto* key = static_cast<QKeyEvent*>(event);
  const bool undoes = key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo);
  const bool isNumber = qobject_cast<QAbstractSpinBox*>(watched) != nullptr ||
                        qobject_cast<QAbstractSpinBox*>(watched->parent()) != nullptr;
  if (undoes && isNumber) {
    event->ignore();
    return true;
  }
  if (!needs(watched, *key)) return false;
  event->accept();  // it comes as an ordinary key then
  return true;
}

}  // namespace desk
