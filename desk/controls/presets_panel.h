// The effect's presets by their thumbnails.
#pragma once

#include <QListWidget>

#include "desk/render/preview.h"

namespace desk {

/// A click gives the layer shown what the preset sets, as in the effect's own panel.
class PresetsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit PresetsPanel(Preview& preview, QWidget* parent = nullptr);

 private:
  QListWidget* rowOf(std::size_t row);

  Preview& preview_;
};

}  // namespace desk
