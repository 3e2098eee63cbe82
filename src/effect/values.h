// The values of all parameters at one frame: what a person set, as exactly as projects keep it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/geometry.h"
#include "effect/parameters.h"

namespace brisel {

/// A color as parameters hold it; the alpha byte is kept and means nothing.
struct ByteColor {
  std::uint8_t alpha = 0;
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

/// One parameter's value. Of a number and an angle, `number` is 16.16 (65536 counts as 1); of a
/// whole number itself; of a checkbox 0 or 1; of a popup the item, counted from 1; of a mask its
/// id, or 0 for none; of a color its bytes. A point has both, 16.16 pixels of the frame.
struct Value {
  std::int32_t number = 0;
  std::int32_t y = 0;

  friend bool operator==(const Value&, const Value&) = default;
};

/// Rounded to the nearest 16.16 number; saturates, and not-a-number becomes the least.
std::int32_t toFixed(double number);

Value toValue(ByteColor color);
ByteColor toColor(Value color);

/// Plain data, copied by value. Numbers outside the declared ranges are kept; settingsOf clamps
/// those that bound loops and memory. An index is 0 .. kParamCount - 1.
class Values {
 public:
  /// Every parameter's default; points, declared in percent, in pixels of a frame of that size.
  explicit Values(FrameSize frame = {});

  Value& operator[](std::int32_t index) { return values_[static_cast<std::size_t>(index)]; }
  const Value& operator[](std::int32_t index) const {
    return values_[static_cast<std::size_t>(index)];
  }

  /// The number of any kind but points and colors, in the unit of its parameter: 25.5, degrees, an
  /// item, 0 or 1. Fractions of whole numbers and items are dropped.
  void setNumber(ParamIndex index, double number);
  double number(ParamIndex index) const;

  void setPoint(ParamIndex index, double x, double y);  // pixels
  void setColor(ParamIndex index, ByteColor color);
  ByteColor color(ParamIndex index) const { return toColor((*this)[index]); }

 private:
  std::array<Value, kParamCount> values_;
};

}  // namespace brisel
