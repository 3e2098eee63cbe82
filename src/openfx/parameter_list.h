// The effect's parameters as OpenFX hosts see them: a translation of the effect's table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "effect/parameters.h"

namespace brisel::openfx {

struct EffectParameter {
  enum class Kind : std::uint8_t {
    Group,
    Number,
    WholeNumber,
    Angle,
    Checkbox,
    Popup,
    Color,
    Point,   // shares of the frame, x to the right and y up
    Preset,  // a popup that sets others when somebody chooses an item
    Scene,   // the path of a scene file
    Mask,    // SVG path data
    StartFrame
  };

  Kind kind;
  std::string name;  // by which hosts store it, frozen
  std::string label;
  std::string hint;
  std::string parent;              // name of the group around it, or empty
  ParamIndex index = kInputLayer;  // of the effect's parameter; the input layer stands for none
};

/// In order: a group comes before what is in it.
std::span<const EffectParameter> effectParameters();

/// What a popup or a row of presets offers, in a frozen order that may only grow at its end.
std::vector<std::string> itemsOf(const EffectParameter& parameter);

/// The number at first, in the parameter's unit; an item from 1.
double initialNumber(const EffectParameter& parameter);

/// A point at first, as shares of the frame from its left and its bottom.
struct Share {
  double x, y;
};
Share initialPoint(const EffectParameter& parameter);

}  // namespace brisel::openfx
