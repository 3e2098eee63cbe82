// The bytes of a saved instance: a mark, byte order, version, size, the state field by field, and a
// checksum over all of it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "effect/instance.h"
#include "engine/particle.h"
#include "render/stars/compose.h"

namespace brisel {

/// The state that frames leave to the next ones.
struct SavedState {
  std::int32_t stepCounter = 0;
  float emissionAccumulator = 0.0f;
  std::uint32_t randomState = 0;
  SpriteState sprites;
  std::vector<Particle> stars;
};

/// Throws std::bad_alloc, as fromBytes does.
std::vector<std::uint8_t> toBytes(const SavedState& state);

/// Fills `state` when the result is Restored; else its content means nothing. Bytes that claim more
/// rays, steps or color than the effect itself makes count as damaged, whatever their checksum.
RestoreResult fromBytes(std::span<const std::uint8_t> bytes, SavedState& state);

}  // namespace brisel
