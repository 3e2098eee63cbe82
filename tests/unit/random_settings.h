// Emitter settings of every kind, for the comparison of births and steps with the reference.
#pragma once

#include "engine/render_settings.h"
#include "support.h"

namespace unit {

/// Standard paths 1 to 5 on the frame of `input`, which also becomes the layer that stars take
/// colours and sizes from.
brisel::RenderSettings anyEmitter(Dice& dice, Frame& input);

}  // namespace unit
