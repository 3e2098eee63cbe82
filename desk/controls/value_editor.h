// The widgets that a person turns a parameter by, one kind for each kind of parameter.
#pragma once

#include <QWidget>

#include "effect/parameters.h"
#include "scene/parameter_values.h"

namespace desk {

class ValueEditor : public QWidget {
  Q_OBJECT

 public:
  /// Of the kind that fits the parameter, which takes a value.
  static ValueEditor* make(const brisel::ParameterSpec& parameter, QWidget* parent);

  /// Shows a value, and tells nobody.
  virtual void show(const scene::ParamValue& value) = 0;

 signals:
  void edited(const scene::ParamValue& value);
  /// Around the values of one drag.
  void gestureBegan();
  void gestureEnded();
  /// Instead of its end: what was there before is wanted back.
  void gestureCanceled();

 protected:
  using QWidget::QWidget;
};

}  // namespace desk
