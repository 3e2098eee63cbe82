// One frame, whoever hosts the effect and wherever its state is kept: the stars advance by a step
// and are painted, and the input is mixed in. Most programs use an Instance, which keeps the state.
#pragma once

#include <cstdint>

#include "effect/frame_views.h"
#include "effect/values.h"

namespace brisel {

class RandomGenerator;
struct MaskOutline;
struct Particle;
struct SpriteState;

/// What one frame leaves to the next, wherever it is kept.
struct FrameState {
  Particle*& stars;         // `capacity` records of resizeStars, or null
  std::int32_t& capacity;   // changed by resizeStars and releaseStars alone
  std::int32_t& starCount;  // living stars, at most capacity
  std::int32_t& stepCounter;
  float& emissionAccumulator;
  RandomGenerator& random;
  SpriteState& sprites;
};

/// Gives the star array `capacity` records, keeping the oldest stars that fit. Returns false, and
/// changes nothing, when `capacity` is not above 0 or there is no memory.
bool resizeStars(const FrameState& state, std::int32_t capacity);

/// Releases an array of resizeStars; null is ignored.
void releaseStars(Particle* stars, std::int32_t capacity);

/// As before the first frame: no stars, and the same ones are born again. Keeps the array.
void resetState(const FrameState& state);

/// Advances `state` by one step, and makes all pixels of the output: the stars, with the backdrop
/// or else the input mixed in as "Mix with original" says. Without a state there are no stars.
/// `mask` is the outline of the mask that `values` choose, or null when none is chosen; a chosen
/// mask without an outline gives way to the Bezier. Throws std::bad_alloc, and has then taken the
/// step as a whole or not begun it. Returns false when stars are left out, as there was no memory
/// for more, or for what they are born on.
bool renderFrame(const Values& values, const FrameViews& views, const MaskOutline* mask,
                 const FrameState* state);

/// Advances the state as renderFrame does, but keeps no pixels. Of the output only the size counts.
bool stepFrame(const Values& values, const FrameViews& views, const MaskOutline* mask,
               const FrameState& state);

}  // namespace brisel
