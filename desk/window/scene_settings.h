// What a scene is apart from its stars: size, length, rate.
#pragma once

#include <QDialog>

#include "desk/document/scene_document.h"

class QComboBox;
class QDialogButtonBox;
class QSpinBox;

namespace desk {

/// Changes of what is not touched are not made, so that the scene goes on taking it from its input.
/// All together are one step of the document.
class SceneSettings : public QDialog {
  Q_OBJECT

 public:
  explicit SceneSettings(SceneDocument& document, QWidget* parent = nullptr);

  void accept() override;

 private:
  SceneDocument& document_;
  QSpinBox* width_;
  QSpinBox* height_;
  QSpinBox* frames_;
  QSpinBox* preroll_;
  QComboBox* rate_;
  QComboBox* depth_;
  QDialogButtonBox* buttons_;
};

}  // namespace desk
