// What a host has set of the filter's parameters.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "look/choices.h"

namespace brisel {

/// Some hosts store and hand over every parameter, whether anybody touched it or not. So one at its
/// default says nothing, and what a scene or a preset says of it stays.
class FilterSettings {
 public:
  using Color = std::array<float, 3>;  // red, green, blue, 0 to 1
  using Setting = std::variant<double, Color, std::string>;

  FilterSettings();  // all defaults; throws std::bad_alloc, as setting does

  /// As it was set, of the kind that the parameter has.
  const Setting& operator[](std::size_t parameter) const { return settings_[parameter]; }
  const std::string& text(std::size_t parameter) const {
    return std::get<std::string>(settings_[parameter]);
  }

  /// Takes a setting of the parameter's kind; not-a-number stands for the default. Returns whether
  /// it is another one than before.
  bool set(std::size_t parameter, Setting setting);

  /// What differs from the defaults, for frames of that size. A text that is no item of its popup
  /// does not count.
  Choices choices(FrameSize frame) const;

 private:
  std::vector<Setting> settings_;
};

}  // namespace brisel
