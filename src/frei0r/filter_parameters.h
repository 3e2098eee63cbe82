// The filter's parameters as its hosts see them: the effect's table in the few kinds that the
// interface has, after a scene and presets to start from and before the frame rate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "effect/parameters.h"

namespace brisel {

/// Numbers are shown from 0 to 1. Points are two of them, as some hosts know no points, and popups
/// are the text of an item.
struct FilterParameter {
  enum class Kind : std::uint8_t { Number, Checkbox, Color, Text };

  Kind kind;
  std::string name;                // unique
  std::string explanation;         // what the host's value stands for
  ParamIndex index = kInputLayer;  // of the effect's parameter; the input layer stands for none
  bool isY = false;                // the second number of a point
};

inline constexpr std::size_t kSceneParameter = 0;
inline constexpr std::size_t kPresetsParameter = 1;

/// In the order under which hosts count them, which is frozen: the scene, the presets, the effect's
/// in the order of its table, the frame rate.
std::span<const FilterParameter> filterParameters();

/// The effect's number at first, or an item; a coordinate of a point as a share of the frame.
double initialNumber(const FilterParameter& parameter);

/// A number of the effect as hosts have it: 0 and 1 are the ends of the slider, the angle of no and
/// of one turn, or the sides of the frame.
double hostNumber(const FilterParameter& parameter, double number);

/// The reverse, held to the valid range. Hosts write six decimals: what is as near to a number of
/// two decimals as these can tell is taken for that.
double effectNumber(const FilterParameter& parameter, double hostNumber);

/// The item, from 1, that a text or a number in it stands for, whatever its capitals.
std::optional<int> popupItem(const ParameterSpec& spec, const std::string& text);

}  // namespace brisel
