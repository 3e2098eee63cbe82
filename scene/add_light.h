// Light upon light where there may be nothing behind it.
#pragma once

#include "core/image_view.h"

namespace scene {

/// Adds the stars of `below` to those of `picture`, both Argb8 or both Argb16 and of one size: the
/// colors by their alphas, and the alphas up to full. Over black the sum is as bright as the two
/// together, whichever of them is below; over an opaque picture it is what the effect's "Add"
/// makes, within rounding.
void addLight(const brisel::MutableImageView& picture, const brisel::ImageView& below);

}  // namespace scene
