// The layers of a scene as a list, the uppermost first.
#pragma once

#include <QListWidget>

#include "desk/render/preview.h"

class QToolButton;

namespace desk {

/// The selected one is what the controls are of. A double click renames, a drag moves.
class LayersPanel : public QWidget {
  Q_OBJECT

 public:
  explicit LayersPanel(Preview& preview, QWidget* parent = nullptr);

 private:
  void refresh();
  void takeOrder();
  void moveLayer(int to);  // the one shown
  int layerOf(int row) const { return list_->count() - 1 - row; }

  Preview& preview_;
  QListWidget* list_;
  QToolButton* up_;
  QToolButton* down_;
  QToolButton* remove_;
  bool isRefreshing_ = false;
};

}  // namespace desk
