// One star, and the population of stars of one effect instance.
#pragma once

#include <cstdint>
#include <type_traits>

#include "core/options.h"

namespace brisel {

/// A star's birth values, age and current position: plain data, copied by value.
struct Particle {
  float randomFactor;  // [-1, 1): the star's own random number, taken at birth
  float size;          // fraction of the frame width
  float rayWidth;      // fraction of the frame width
  float angle;         // degrees
  float value;         // brightness, never negative
  std::int32_t raysCount;
  std::int32_t colorR, colorG, colorB;                             // 0..255
  std::int32_t terminateColorR, terminateColorG, terminateColorB;  // 0..255
  StarType starType;            // may be rewritten when the star explodes or flashes
  TerminateType terminateType;  // never Mixt: that is resolved at birth
  std::uint8_t placementRetries;
  float x, y;                  // current position, pixels
  float startX, startY;        // emission point, fractions of the frame's width and height
  float age;                   // steps; slightly negative in the step of birth
  float birthTime;             // steps
  float lifeTime;              // steps; kFailedPlacement for a star that found no place
  float velocityX, velocityY;  // pixels per step
};

static_assert(std::is_trivially_copyable_v<Particle>);
static_assert(sizeof(Particle) == 88);

/// The lifeTime of a star whose placement failed; such a star is never painted.
inline constexpr float kFailedPlacement = -1.0f;

/// The living stars during one render: the first `starCount` records of `stars`, oldest first. The
/// array belongs to the effect instance.
struct StarPopulation {
  Particle* stars = nullptr;
  std::int32_t capacity = 0;
  std::int32_t starCount = 0;
  float emissionAccumulator = 0.0f;  // fractional stars carried to the next step
  float stepIndex = 0.0f;            // now
};

}  // namespace brisel
