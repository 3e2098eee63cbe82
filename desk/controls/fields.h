// What the editors of values are made of.
#pragma once

#include <QDoubleSpinBox>

#include "effect/parameters.h"

namespace desk {

/// Turning the wheel over a panel scrolls it, and changes only what has the focus.
void guardFromWheel(QWidget* widget);

/// For a number of the parameter's, with its name and its unit; its range is the caller's.
QDoubleSpinBox* numberField(const brisel::ParameterSpec& parameter, QWidget* parent);

/// Of all such fields, so that they stand in line.
int widthOfNumbers(const QWidget& field);

}  // namespace desk
