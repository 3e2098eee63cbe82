#include "plugin/render_driver.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

#include "effect/frame.h"
#include "plugin/host_parameters.h"
#include "plugin/locked_handle.h"
#include "plugin/mask_path.h"
#include "plugin/module_state.h"
#include "plugin/sdk/codes.h"
#include "plugin/sequence_data.h"

namespace brisel {
namespace {

/// Input and output are read at the output's depth.
PixelFormat formatOf(const PF_LayerDef& output) {
  return (output.world_flags & PF_WorldFlag_DEEP) != 0 ? PixelFormat::Argb16 : PixelFormat::Argb8;
}

MutableImageView outputView(PF_LayerDef& output) {
  return {reinterpret_cast<std::uint8_t*>(output.data), output.width, output.height,
          output.rowbytes, formatOf(output)};
}

/// Empty when the host gives no input, or the output for one; never wider than its rows.
ImageView inputView(const PF_LayerDef& input, const PF_LayerDef& output) {
  if (input.data == nullptr || input.data == output.data) return {};
  const PixelFormat format = formatOf(output);
  ImageView view{reinterpret_cast<const std::uint8_t*>(input.data), 0, std::max(input.height, 0),
                 input.rowbytes, format};
  const auto widest = static_cast<std::int32_t>(input.rowbytes / view.pixelBytes());
  view.width = std::clamp(input.width, 0, std::max(widest, 0));
  return view;
}

/// Whether the world's rows hold as many pixels as it claims.
bool isSound(const PF_LayerDef& world) {
  const std::int32_t pixelBytes = formatOf(world) == PixelFormat::Argb16 ? 8 : 4;
  return world.data != nullptr && world.width > 0 && world.height > 0 &&
         world.rowbytes / pixelBytes >= world.width;
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

FrameState frameState(SequenceState& state) {
  return {state.stars,
          state.capacity,
          state.starCount,
          state.stepCounter,
          state.emissionAccumulator,
          randomGenerator(),
          moduleState().sprites};
}

void renderSoundFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                      PF_LayerDef& output) {
  ModuleState& module = moduleState();
  module.frameSize = {output.width, output.height};
  const Values values = readValues(params);
  const FrameViews views{outputView(output), inputView(params[kInputLayer]->u.ld, output), in.width,
                         in.quality == PF_Quality_HI, &module.painter};
  const MaskPath mask(in, values[kPath].number);
  std::optional<LockedHandle> locked;
  if (hasHandleCallbacks(in)) locked.emplace(*in.utils, out.sequence_data);
  auto* sequence = locked ? static_cast<SequenceState*>(locked->get()) : nullptr;
  if (sequence == nullptr) {
    renderFrame(values, views, mask.outline(), nullptr);
  } else {
    const FrameState state = frameState(*sequence);
    if (in.current_time < 1) resetState(state);
    renderFrame(values, views, mask.outline(), &state);
  }
  clearPadding(output);
}

}  // namespace

PF_Err renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_LayerDef& output) {
  if (!isSound(output)) return PF_Err_NONE;
  if (!hasAllParameters(in, params)) {
    clear(output);
    return PF_Err_NONE;
  }
  try {
    renderSoundFrame(in, out, params, output);
  } catch (...) {
    clear(output);  // part of a frame, or none
    throw;
  }
  return PF_Err_NONE;
}

}  // namespace brisel
