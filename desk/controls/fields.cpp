#include "desk/controls/fields.h"

#include <QWheelEvent>

namespace desk {
namespace {

constexpr int kNumberCells = 12;  // as wide as digits: a number, its unit and its arrows

class WheelGuard : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() != QEvent::Wheel || !widget || widget->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

QString suffixOf(brisel::ParamUnit unit) {
  switch (unit) {
    case brisel::ParamUnit::Percent:
      return QStringLiteral(" %");
    case brisel::ParamUnit::Degrees:
      return QStringLiteral("°");
    case brisel::ParamUnit::Frames:
      return QStringLiteral(" fr");
    case brisel::ParamUnit::Pixels:
      return QStringLiteral(" px");
    default:
      return {};
  }
}

}  // namespace

void guardFromWheel(QWidget* widget) {
  widget->setFocusPolicy(Qt::StrongFocus);
  widget->installEventFilter(new WheelGuard(widget));
}

QDoubleSpinBox* numberField(const brisel::ParameterSpec& parameter, QWidget* parent) {
  auto* field = new QDoubleSpinBox(parent);
  field->setAccessibleName(QString::fromUtf8(parameter.label));
  field->setKeyboardTracking(false);  // a number counts once it is written
  field->setSuffix(suffixOf(parameter.unit));
  guardFromWheel(field);
  return field;
}

int widthOfNumbers(const QWidget& field) {
  return kNumberCells * field.fontMetrics().horizontalAdvance(QLatin1Char('0'));
}

}  // namespace desk
