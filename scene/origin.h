// Who says what a parameter is to be, and how a mistake of theirs is answered.
#pragma once

#include <cstdint>
#include <string>

#include "scene/text/errors.h"

namespace scene {

/// Each wins over those before it: the scene for all of its layers, one layer, an option of the
/// program that renders the scene.
enum class Origin : std::uint8_t { Scene, Layer, Option };

/// Throws UsageError for an option, else WorkError.
[[noreturn]] inline void reject(Origin origin, const std::string& message) {
  if (origin == Origin::Option) throw UsageError(message);
  throw WorkError(message);
}

}  // namespace scene
