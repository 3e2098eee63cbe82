#include "desk/window/scene_settings.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace desk {
namespace {

QSpinBox* number(int least, int most, int value, const QString& name, const QString& suffix = {}) {
  auto* box = new QSpinBox;
  box->setRange(least, most);
  box->setValue(value);
  box->setSuffix(suffix);
  box->setAccessibleName(name);
  return box;
}

}  // namespace

SceneSettings::SceneSettings(SceneDocument& document, QWidget* parent)
    : QDialog(parent), document_(document) {
  setWindowTitle("Scene settings");
  const cli::ScenePlan& plan = document.state()->plan;
  auto* form = new QFormLayout(this);

  width_ = number(1, scene::kMaxSide, plan.layer.width, "Width in pixels");
  height_ = number(1, scene::kMaxSide, plan.layer.height, "Height in pixels");
  auto* size = new QHBoxLayout;
  size->addWidget(width_);
  size->addWidget(new QLabel("×"));
  size->addWidget(height_);
  size->addStretch();
  form->addRow("&Size", size);
  static_cast<QLabel*>(form->labelForField(size))->setBuddy(width_);

  frames_ = number(1, scene::kMaxFrames, plan.frames, "Frames");
  form->addRow("&Frames", frames_);
  rate_ = new QComboBox;
  rate_->setEditable(true);
  rate_->addItems({"23.976", "24", "25", "29.97", "30", "50", "59.94", "60"});
  rate_->setEditText(QString::fromStdString(plan.rate.text()));
  form->addRow("Frames per s&econd", rate_);
  preroll_ = number(0, scene::kMaxFrames, plan.scene.preroll, "Preroll", " steps");
  preroll_->setToolTip("Before the first frame, so that a clip starts in full swing");
  form->addRow("&Preroll", preroll_);
  depth_ = new QComboBox;
  depth_->addItems({"8 bits", "16 bits"});
  depth_->setCurrentIndex(plan.scene.depth == 16 ? 1 : 0);
  form->addRow("&Depth", depth_);

  buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  form->addRow(buttons_);
  connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(rate_, &QComboBox::editTextChanged, this, [this](const QString& text) {
    const bool isRate = scene::frameRateFromText(text.toStdString()).has_value();
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(isRate);
  });
}

void SceneSettings::accept() {
  const SharedState before = document_.state();
  const cli::ScenePlan& plan = before->plan;
  document_.beginGesture();
  if (width_->value() != plan.layer.width || height_->value() != plan.layer.height) {
    document_.setSize(width_->value(), height_->value());
  }
  if (frames_->value() != plan.frames) document_.setFrames(frames_->value());
  if (scene::frameRateFromText(rate_->currentText().toStdString()) != plan.rate) {
    document_.setRate(rate_->currentText());
  }
  if (preroll_->value() != plan.scene.preroll) document_.setPreroll(preroll_->value());
  const int depth = depth_->currentIndex() == 1 ? 16 : 8;
  if (depth != plan.scene.depth) document_.setDepth(depth);
  document_.endGesture();
  QDialog::accept();
}

}  // namespace desk
