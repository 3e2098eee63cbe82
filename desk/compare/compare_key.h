// A key that shows the scene as it was before its last step, for as long as it is held.
#pragma once

#include <QObject>

#include "desk/render/preview.h"

namespace desk {

/// Filters the application's events, so that it works wherever the focus is, but while text is
/// being written.
class CompareKey : public QObject {
  Q_OBJECT

 public:
  CompareKey(Preview& preview, Qt::Key key, QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void hold(bool held);

  Preview& preview_;
  Qt::Key key_;
  bool isHeld_ = false;
};

}  // namespace desk
