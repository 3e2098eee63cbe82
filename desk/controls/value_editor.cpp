#include "desk/controls/value_editor.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDial>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "desk/controls/fields.h"
#include "desk/controls/number_slider.h"

namespace desk {
namespace {

using brisel::ParameterSpec;
using brisel::ParamKind;
using scene::ParamValue;

constexpr double kFullTurn = 360;
constexpr int kHalfTurn = 180;
constexpr double kMostTurns = 1000;
constexpr double kFarthestPoint = 10;  // frames away
// Pixels, where the panel is narrow.
constexpr int kLeastSlider = 60;
constexpr int kLeastPointField = 72;
constexpr int kLeastMenuCells = 8;  // letters of an item

class NumberEditor : public ValueEditor {
 public:
  NumberEditor(const ParameterSpec& parameter, QWidget* parent)
      : ValueEditor(parent),
        slider_(new NumberSlider(parameter.kind == ParamKind::Number ? 10 : 1, this)),
        field_(numberField(parameter, this)) {
    const int steps = slider_->steps();
    slider_->setRange(parameter.sliderMin * steps, parameter.sliderMax * steps);
    slider_->setPageStep(std::max((slider_->maximum() - slider_->minimum()) / 20, 1));
    slider_->setAccessibleName(field_->accessibleName());
    slider_->setMinimumWidth(kLeastSlider);
    guardFromWheel(slider_);
    field_->setDecimals(parameter.kind == ParamKind::Number ? 2 : 0);
    field_->setRange(parameter.validMin, parameter.validMax);
    field_->setFixedWidth(widthOfNumbers(*field_));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(slider_, 1);
    row->addWidget(field_);
    connect(slider_, &QSlider::sliderPressed, this, &ValueEditor::gestureBegan);
    connect(slider_, &QSlider::sliderReleased, this, &ValueEditor::gestureEnded);
    connect(slider_, &QSlider::valueChanged, this, [this, steps](int value) {
      const QSignalBlocker quiet(field_);
      field_->setValue(static_cast<double>(value) / steps);
      emit edited({field_->value()});
    });
    connect(field_, &QDoubleSpinBox::valueChanged, this, [this](double value) {
      show({value});
      emit edited({value});
    });
  }

  void show(const ParamValue& value) override {
    const QSignalBlocker quietSlider(slider_);
    const QSignalBlocker quietField(field_);
    slider_->setValue(static_cast<int>(std::lround(value[0] * slider_->steps())));
    field_->setValue(value[0]);
  }

 private:
  NumberSlider* slider_;
  QDoubleSpinBox* field_;
};

/// The dial, whose least value is at its bottom, stands straight up at 0 and turns clockwise; whole
/// turns are kept.
class AngleEditor : public ValueEditor {
 public:
  AngleEditor(const ParameterSpec& parameter, QWidget* parent)
      : ValueEditor(parent), dial_(new QDial(this)), field_(numberField(parameter, this)) {
    dial_->setRange(-kHalfTurn, kHalfTurn);
    dial_->setWrapping(true);
    dial_->setFixedSize(40, 40);
    dial_->setAccessibleName(field_->accessibleName());
    guardFromWheel(dial_);
    field_->setSuffix(QStringLiteral("°"));
    field_->setFixedWidth(widthOfNumbers(*field_));
    field_->setRange(-kMostTurns * kFullTurn, kMostTurns * kFullTurn);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(dial_);
    row->addStretch();
    row->addWidget(field_);
    connect(dial_, &QDial::sliderPressed, this, &ValueEditor::gestureBegan);
    connect(dial_, &QDial::sliderReleased, this, &ValueEditor::gestureEnded);
    connect(dial_, &QDial::valueChanged, this, [this](int position) {
      const double turned = std::remainder(position - field_->value(), kFullTurn);
      const QSignalBlocker quiet(field_);
      field_->setValue(field_->value() + turned);
      emit edited({field_->value()});
    });
    connect(field_, &QDoubleSpinBox::valueChanged, this, [this](double value) {
      show({value});
      emit edited({value});
    });
  }

  void show(const ParamValue& value) override {
    const QSignalBlocker quietDial(dial_);
    const QSignalBlocker quietField(field_);
    dial_->setValue(static_cast<int>(std::lround(std::remainder(value[0], kFullTurn))));
    field_->setValue(value[0]);
  }

 private:
  QDial* dial_;
  QDoubleSpinBox* field_;
};

class CheckboxEditor : public ValueEditor {
 public:
  CheckboxEditor(const ParameterSpec& parameter, QWidget* parent)
      : ValueEditor(parent), box_(new QCheckBox(this)) {
    box_->setAccessibleName(QString::fromUtf8(parameter.label));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(box_);
    connect(box_, &QCheckBox::toggled, this, [this](bool on) { emit edited({on ? 1.0 : 0.0}); });
  }

  void show(const ParamValue& value) override {
    const QSignalBlocker quiet(box_);
    box_->setChecked(value[0] != 0);
  }

 private:
  QCheckBox* box_;
};

class MenuEditor : public ValueEditor {
 public:
  MenuEditor(const ParameterSpec& parameter, QWidget* parent)
      : ValueEditor(parent), menu_(new QComboBox(this)) {
    menu_->setAccessibleName(QString::fromUtf8(parameter.label));
    // Screen readers get its item as the name on some systems.
    menu_->setAccessibleDescription(menu_->accessibleName());
    guardFromWheel(menu_);
    menu_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    menu_->setMinimumContentsLength(kLeastMenuCells);
    for (const std::string& item : scene::itemsOf(parameter)) {
      menu_->addItem(QString::fromStdString(item));
    }
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(menu_, 1);
    connect(menu_, &QComboBox::currentIndexChanged, this,
            [this](int index) { emit edited({index + 1.0}); });
  }

  void show(const ParamValue& value) override {
    const QSignalBlocker quiet(menu_);
    menu_->setCurrentIndex(static_cast<int>(value[0]) - 1);
  }

 private:
  QComboBox* menu_;
};

/// Its dialog stays open beside the window, and the picture follows what is tried in it.
class ColorEditor : public ValueEditor {
 public:
  ColorEditor(const ParameterSpec& parameter, QWidget* parent)
      : ValueEditor(parent), button_(new QPushButton(this)) {
    button_->setAccessibleName(QString::fromUtf8(parameter.label));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(button_, 1);
    connect(button_, &QPushButton::clicked, this, [this] { choose(); });
  }

  void show(const ParamValue& value) override {
    color_ = QColor::fromRgb(static_cast<int>(value[0]), static_cast<int>(value[1]),
                             static_cast<int>(value[2]));
    QPixmap swatch(32, 16);
    swatch.fill(color_);
    button_->setIcon(swatch);
    button_->setIconSize(swatch.size());
    button_->setText(color_.name());
    button_->setAccessibleDescription(color_.name());  // beside the name, which stands for the text
  }

 private:
  void choose() {
    auto* dialog = new QColorDialog(color_, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(button_->accessibleName());
    const auto tell = [this](const QColor& color) {
      const ParamValue value{static_cast<double>(color.red()), static_cast<double>(color.green()),
                             static_cast<double>(color.blue())};
      show(value);
      emit edited(value);
    };
    connect(dialog, &QColorDialog::currentColorChanged, this, tell);
    connect(dialog, &QColorDialog::accepted, this, &ValueEditor::gestureEnded);
    connect(dialog, &QColorDialog::rejected, this, &ValueEditor::gestureCanceled);
    emit gestureBegan();
    dialog->open();
  }

  QPushButton* button_;
  QColor color_;
};

/// Fractions of the frame, from its upper left corner.
class PointEditor : public ValueEditor {
 public:
  PointEditor(const ParameterSpec& parameter, QWidget* parent)
      : ValueEditor(parent), x_(side(parameter, tr("across"))), y_(side(parameter, tr("down"))) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(x_, 1);
    row->addWidget(y_, 1);
  }

  void show(const ParamValue& value) override {
    const QSignalBlocker quietX(x_);
    const QSignalBlocker quietY(y_);
    x_->setValue(value[0]);
    y_->setValue(value[1]);
  }

 private:
  QDoubleSpinBox* side(const ParameterSpec& parameter, const QString& name) {
    QDoubleSpinBox* field = numberField(parameter, this);
    field->setAccessibleName(QString::fromUtf8(parameter.label) + QLatin1Char(' ') + name);
    field->setDecimals(4);
    field->setSingleStep(0.01);
    field->setRange(-kFarthestPoint, kFarthestPoint);
    field->setMinimumWidth(kLeastPointField);
    connect(field, &QDoubleSpinBox::valueChanged, this, [this] {
      emit edited({x_->value(), y_->value()});
    });
    return field;
  }

  QDoubleSpinBox* x_;
  QDoubleSpinBox* y_;
};

}  // namespace

ValueEditor* ValueEditor::make(const ParameterSpec& parameter, QWidget* parent) {
  switch (parameter.kind) {
    case ParamKind::Angle:
      return new AngleEditor(parameter, parent);
    case ParamKind::Checkbox:
      return new CheckboxEditor(parameter, parent);
    case ParamKind::Popup:
      return new MenuEditor(parameter, parent);
    case ParamKind::Color:
      return new ColorEditor(parameter, parent);
    case ParamKind::Point:
      return new PointEditor(parameter, parent);
    default:
      return new NumberEditor(parameter, parent);
  }
}

}  // namespace desk
