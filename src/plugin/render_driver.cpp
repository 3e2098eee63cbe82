#include "plugin/render_driver.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <utility>

#include "effect/frame.h"
#include "plugin/host_parameters.h"
#include "plugin/mask_path.h"
#include "plugin/module_state.h"
#include "plugin/sdk/codes.h"
#include "plugin/sequence_data.h"

namespace brisel {
namespace {

PixelFormat formatOf(const PF_LayerDef& output) {
  return (output.world_flags & PF_WorldFlag_DEEP) != 0 ? PixelFormat::Argb16 : PixelFormat::Argb8;
}

MutableImageView outputView(PF_LayerDef& output) {
  return {reinterpret_cast<std::uint8_t*>(output.data), output.width, output.height,
          output.rowbytes, formatOf(output)};
}

/// Input and backdrop are read at the output's depth. Empty when the host gives none, or the output
/// for one; never wider than its rows.
ImageView inputView(const PF_LayerDef& input, const MutableImageView& output) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(input.data);
  if (bytes == nullptr || bytes == output.bytes) return {};
  ImageView view{bytes, 0, std::max(input.height, 0), input.rowbytes, output.format};
  const auto widest = static_cast<std::int32_t>(input.rowbytes / view.pixelBytes());
  view.width = std::clamp(input.width, 0, std::max(widest, 0));
  return view;
}

void clear(PF_LayerDef& world) {
  const std::size_t bytes =
      static_cast<std::size_t>(world.height) * static_cast<std::size_t>(world.rowbytes);
  std::memset(world.data, 0, bytes);
}

/// Rows are cleared as far as they go, and painting leaves alone what is no pixel.
void clearPadding(PF_LayerDef& world) {
  const MutableImageView view = outputView(world);
  const std::ptrdiff_t pixelBytes = view.pixelBytes() * view.width;
  if (pixelBytes == view.rowBytes) return;
  for (std::int32_t y = 0; y < view.height; ++y) {
    std::memset(view.at(view.width, y), 0, static_cast<std::size_t>(view.rowBytes - pixelBytes));
  }
}

/// What surrounds the frame of a command, without what it is painted with.
FrameViews viewsOf(const PF_InData& in, PF_ParamDef* const* params,
                   const MutableImageView& output) {
  FrameViews views;
  views.output = output;
  views.input = inputView(params[kInputLayer]->u.ld, output);
  views.layerWidth = in.width;
  views.highQuality = in.quality == PF_Quality_HI;
  return views;
}

/// What the instance is to be painted with. A backdrop is for one frame.
void choosePainting(InstanceExtras* extras, const DrawingLease& drawing, FrameViews& views) {
  views.painter = &drawing.state().painter;
  if (extras == nullptr) return;
  if (extras->painter != nullptr) views.painter = extras->painter.get();
  if (extras->backdrop) {
    views.backdrop = inputView(*std::exchange(extras->backdrop, {}), views.output);
  }
}

/// The handle stays locked while the frame is painted: painting takes stars as they are composed,
/// and mixes the input in while the pixels are in the cache. Returns false when there was no memory
/// for all stars.
bool renderSoundFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                      PF_LayerDef& output) {
  const Values values = readValues(params);
  FrameViews views = viewsOf(in, params, outputView(output));
  const MaskPath mask(in, values[kPath].number);
  LockedSequence locked(in, out.sequence_data);
  SequenceState* sequence = locked.change();
  InstanceExtras* extras = sequence != nullptr ? sequence->extras : nullptr;
  const DrawingLease drawing(extras != nullptr ? extras->own.get() : nullptr);
  drawing.state().frameSize = {output.width, output.height};
  choosePainting(extras, drawing, views);
  bool isComplete = true;
  if (sequence == nullptr) {
    renderFrame(values, views, mask.outline(), nullptr);
  } else {
    const FrameState state = frameStateOf(*sequence, drawing);
    if (in.current_time < 1) resetState(state);
    isComplete = renderFrame(values, views, mask.outline(), &state);
  }
  clearPadding(output);
  return isComplete && mask.isComplete();
}

/// A host is not told of a frame for which there is no memory. A program that gave the instance a
/// state of its own is: it would take what there is for what it asked for.
PF_Err reportLostFrame(const PF_InData& in, PF_OutData& out) {
  const LockedSequence locked(in, out.sequence_data);
  const SequenceState* sequence = locked.get();
  const bool isAPrograms =
      sequence != nullptr && sequence->extras != nullptr && sequence->extras->own != nullptr;
  if (!isAPrograms) return PF_Err_NONE;
  std::snprintf(out.return_msg, sizeof out.return_msg, "there is no memory for the frame");
  return PF_Err_OUT_OF_MEMORY;
}

}  // namespace

bool isSound(const PF_LayerDef& world) {
  const std::int32_t pixelBytes = formatOf(world) == PixelFormat::Argb16 ? 8 : 4;
  return world.data != nullptr && world.width > 0 && world.height > 0 &&
         world.rowbytes / pixelBytes >= world.width;
}

FrameState frameStateOf(SequenceState& sequence, const DrawingLease& drawing) {
  return {sequence.stars,
          sequence.capacity,
          sequence.starCount,
          sequence.stepCounter,
          sequence.emissionAccumulator,
          drawing.random(),
          drawing.state().sprites};
}

PF_Err renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_LayerDef& output) {
  if (!isSound(output)) return PF_Err_NONE;
  if (!hasAllParameters(in, params)) {
    clear(output);
    return PF_Err_NONE;
  }
  try {
    if (renderSoundFrame(in, out, params, output)) return PF_Err_NONE;
  } catch (...) {   // the only failure here is lack of memory
    clear(output);  // part of a frame, or none
  }
  return reportLostFrame(in, out);
}

bool advanceFrame(const PF_InData& in, PF_ParamDef* const* params, FrameSize size,
                  PixelFormat format, SequenceState& sequence) {
  const Values values = readValues(params);
  const FrameViews views = viewsOf(in, params, {nullptr, size.width, size.height, 0, format});
  const MaskPath mask(in, values[kPath].number);
  const DrawingLease drawing(sequence.extras->own.get());
  drawing.state().frameSize = size;
  const FrameState state = frameStateOf(sequence, drawing);
  if (in.current_time < 1) resetState(state);
  return stepFrame(values, views, mask.outline(), state) && mask.isComplete();
}

}  // namespace brisel
