// Which blend rule each "Add mode" gives to an element.
#pragma once

#include "core/options.h"
#include "render/blend.h"

namespace brisel {

/// The rule for an element that blends by `mode1` and `mode2` in the first two modes; the third
/// lightens, whatever the element.
inline BlendRule ruleFor(AddMode mode, BlendRule mode1, BlendRule mode2) {
  if (mode == AddMode::Mode1) return mode1;
  return mode == AddMode::Mode3 ? BlendRule::Lighten : mode2;
}

}  // namespace brisel
