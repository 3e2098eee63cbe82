// Texts of the scene that were set aside, to be looked at and gone back to.
#pragma once

#include <QListWidget>

#include "desk/render/preview.h"

class QPushButton;

namespace desk {

/// They last as long as the scene is open, and are no part of it.
class SnapshotsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit SnapshotsPanel(Preview& preview, QWidget* parent = nullptr);

 private:
  void take();
  PlacedText chosenText() const;  // empty when none is chosen

  Preview& preview_;
  QListWidget* list_;
};

}  // namespace desk
