// The bytes of a saved instance: a mark, byte order, version, size, the state field by field, and a
// checksum over all of it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "effect/frame.h"
#include "effect/instance.h"

namespace brisel {

/// Throws std::bad_alloc.
std::vector<std::uint8_t> saveState(const FrameState& state);

/// Changes nothing unless the result is Restored. Bytes that claim more rays, steps or color than
/// the effect itself makes count as damaged, whatever their checksum.
RestoreResult restoreState(std::span<const std::uint8_t> bytes, const FrameState& state);

}  // namespace brisel
