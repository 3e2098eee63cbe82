// A slider over numbers with decimals, which screen readers get as they are.
#pragma once

#include <QSlider>

namespace desk {

class NumberSlider : public QSlider {
  Q_OBJECT

 public:
  /// With that many steps for 1.
  NumberSlider(int steps, QWidget* parent);

  int steps() const { return steps_; }

 private:
  int steps_;
};

}  // namespace desk
