// From parameter values to what engine and renderer work with.
#pragma once

#include "core/render_settings.h"
#include "effect/values.h"

namespace brisel {

/// What the settings depend on besides the parameters.
struct FrameFacts {
  FrameSize size;               // of the output
  std::int32_t layerWidth = 0;  // of the layer at full resolution, pixels; 0: that of the output
  bool highQuality = false;
};

/// The settings of one frame. Counts that bound loops and memory are held to their declared ranges;
/// a popup's item beyond 0 .. 255 becomes 0.
RenderSettings settingsOf(const Values& values, const FrameFacts& frame);

/// Whether stars born with these values take their place, size or color from the input. If not, a
/// step leaves the same stars whatever the input is.
bool starsReadInput(const Values& values);

}  // namespace brisel
