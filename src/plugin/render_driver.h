// One frame: read the settings, advance the stars by one step, paint them, mix the input in.
#pragma once

#include "core/geometry.h"
#include "core/image_view.h"
#include "effect/frame.h"
#include "plugin/drawing_state.h"
#include "plugin/sdk/in_out_data.h"
#include "plugin/sequence_data.h"

namespace brisel {

/// Renders into `output`. The frame follows from the stars that the last render left in the
/// sequence data, not from the time: only a time below 1 starts afresh. Without sequence data, or
/// when a world cannot be what it says it is, no star is painted. Reports an error only to
/// a program whose instance has a state of its own: a frame that lacks stars or all, for want of
/// memory.
PF_Err renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params, PF_LayerDef& output);

/// Takes the step of such a render into a frame of that size and format, and paints nothing.
/// `params` holds all parameters. Returns false when there was no memory for all stars.
bool advanceFrame(const PF_InData& in, PF_ParamDef* const* params, FrameSize size,
                  PixelFormat format, SequenceState& sequence);

/// What the instance's frames leave to the next ones; `drawing` is leased for it.
FrameState frameStateOf(SequenceState& sequence, const DrawingLease& drawing);

/// Whether the world's rows hold as many pixels as it claims.
bool isSound(const PF_LayerDef& world);

}  // namespace brisel
