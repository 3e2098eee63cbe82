#include "desk/controls/number_slider.h"

#include <QAccessibleWidget>
#include <cmath>

namespace desk {
namespace {

class SliderReader : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit SliderReader(NumberSlider* slider)
      : QAccessibleWidget(slider, QAccessible::Slider), slider_(*slider) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type != QAccessible::ValueInterface) return QAccessibleWidget::interface_cast(type);
    return static_cast<QAccessibleValueInterface*>(this);
  }

  QVariant currentValue() const override { return numberAt(slider_.value()); }
  void setCurrentValue(const QVariant& value) override {
    slider_.setValue(static_cast<int>(std::lround(value.toDouble() * slider_.steps())));
  }
  QVariant minimumValue() const override { return numberAt(slider_.minimum()); }
  QVariant maximumValue() const override { return numberAt(slider_.maximum()); }
  QVariant minimumStepSize() const override { return numberAt(slider_.singleStep()); }

 private:
  double numberAt(int position) const { return static_cast<double>(position) / slider_.steps(); }

  NumberSlider& slider_;
};

QAccessibleInterface* makeReader(const QString& /*className*/, QObject* object) {
  auto* slider = qobject_cast<NumberSlider*>(object);
  return slider ? new SliderReader(slider) : nullptr;
}

}  // namespace

NumberSlider::NumberSlider(int steps, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), steps_(steps) {
  QAccessible::installFactory(makeReader);  // once
}

}  // namespace desk
