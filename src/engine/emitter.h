// Where stars come from: the emitter's shape, and the point on it that belongs to a path parameter.
#pragma once

#include "core/image_view.h"
#include "core/render_settings.h"
#include "engine/bezier.h"

namespace brisel {

/// A point on an emitter, whatever its shape.
struct EmitterPoint {
  float x = 0.0f;  // pixels
  float y = 0.0f;
  float dirX = 0.0f;  // along the emitter: a unit vector, or (0, 0) where the shape has no extent
  float dirY = 0.0f;
  float tangentAngle = 0.0f;  // radians
};

struct ContourEmitter;
struct MaskOutline;

/// What a shape's points have in common, computed once per render from the control points. Only the
/// members of the chosen shape are filled.
struct Emitter {
  CubicBezier curve;                                  // Bezier
  float length = 1.0f;                                // Bezier, Line, Polyline: pixels
  float share1 = 0.0f, share2 = 0.0f, share3 = 0.0f;  // Polyline: each leg's share of the length
  float radius = 0.0f;                                // Circle: pixels
  float startPhase = 0.0f;                            // Circle: turns
  const MaskOutline* maskOutline = nullptr;           // takes the place of every shape; borrowed
  const ContourEmitter* contour = nullptr;            // Contour alpha channel; borrowed
  const float* sourceIntensityMap = nullptr;          // Source as raster mask; borrowed
  ImageView source;                                   // the input, which colors and sizes stars
};

/// Prepares the shape that `standardPath` chooses.
Emitter prepareEmitter(const RenderSettings& settings);

/// The emitter at parameter `t` in [0, 1], after completeness and shift of the path.
EmitterPoint emitterPoint(const RenderSettings& settings, const Emitter& emitter, float t);

}  // namespace brisel
