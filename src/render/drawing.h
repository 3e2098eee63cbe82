// What the sprite routines share: the layer, the rule, and the state that one sprite leaves to the
// next.
#pragma once

#include <cstdint>
#include <vector>

#include "core/image_view.h"
#include "core/random.h"
#include "core/render_settings.h"
#include "render/blend.h"
#include "render/kernels.h"
#include "render/pixel_grid.h"

namespace brisel {

/// Sprite state that outlives a sprite and a frame: each routine reads it as the last writer left
/// it. These are its values when the module is loaded.
struct DrawingState {
  float rainbowShift = 0.0f;  // hue shift of the per-pixel recolouring; 0 means none
  bool rainbowOn = true;
  float currentRandomFactor = 0.0f;  // of the star being drawn
  float glowScale = 0.0f;
  std::uint8_t crossVariant = 0;  // kTexturedCross, or plain
  float textureScale = 0.0f;
  float textureMix = 0.0f;
};

inline constexpr std::uint8_t kPlainCross = 1;
inline constexpr std::uint8_t kTexturedCross = 3;

/// Pi as the drawing code writes it.
inline constexpr float kDrawingPi = 3.141592f;

/// One frame's drawing. Sprites draw into `layer` under `blendRule`, which the caller sets.
struct Drawing {
  const RenderSettings& settings;
  RandomGenerator& random;
  DrawingState& state;
  MutableImageView layer;
  BlendRule blendRule = BlendRule::Over;
  const Kernels* kernels = &activeKernels();
  PixelGrid grid{};  // the current sprite's; kept here so that its memory is reused
};

}  // namespace brisel
