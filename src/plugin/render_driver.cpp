#include "plugin/render_driver.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "effect/settings.h"
#include "engine/alpha_source.h"
#include "engine/contour_emitter.h"
#include "engine/simulation.h"
#include "plugin/host_parameters.h"
#include "plugin/locked_handle.h"
#include "plugin/mask_path.h"
#include "plugin/module_state.h"
#include "plugin/sdk/codes.h"
#include "plugin/sequence_data.h"
#include "render/frame.h"
#include "render/mix.h"

namespace brisel {
namespace {

/// Both layers are taken at the output's depth.
PixelFormat formatOf(const PF_LayerDef& output) {
  return (output.world_flags & PF_WorldFlag_DEEP) != 0 ? PixelFormat::Argb16 : PixelFormat::Argb8;
}

MutableImageView outputView(PF_LayerDef& output) {
  return {reinterpret_cast<std::uint8_t*>(output.data), output.width, output.height,
          output.rowbytes, formatOf(output)};
}

/// Empty when the host gives no input; never wider than its rows.
ImageView inputView(const PF_LayerDef& input, PixelFormat format) {
  if (input.data == nullptr) return {};
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

/// A render from the start always gives the same stars.
void reset(SequenceState& state) {
  state.starCount = 0;
  state.stepCounter = 0;
  state.emissionAccumulator = 0.0f;
  randomGenerator().seedRandom(0);
  moduleState().drawing = DrawingState{};
}

/// Advances the instance's stars by one step and draws them.
void renderStars(RenderSettings& settings, const Emitter& emitter, const MutableImageView& output,
                 SequenceState& state) {
  StarPopulation population;
  population.stepIndex = static_cast<float>(state.stepCounter);
  ++state.stepCounter;
  if (settings.maximumNumberOfStars != state.capacity &&
      !resizeStars(state, settings.maximumNumberOfStars)) {
    settings.maximumNumberOfStars = std::min(settings.maximumNumberOfStars, state.capacity);
  }
  population.stars = state.stars;
  population.capacity = state.capacity;
  population.starCount = state.starCount;
  population.emissionAccumulator = state.emissionAccumulator;

  simulationStep(settings, emitter, randomGenerator(), population);
  state.starCount = population.starCount;
  state.emissionAccumulator = population.emissionAccumulator;

  DrawingState& drawingState = moduleState().drawing;
  drawingState.rainbowShift = settings.colorRainbow;
  Drawing drawing{settings, randomGenerator(), drawingState, output, BlendRule::Over};
  drawAllStars(drawing, population.stars, population.starCount);
}

}  // namespace

PF_Err renderFrame(PF_InData& in, PF_OutData& out, PF_ParamDef* const* params,
                   PF_LayerDef& output) {
  if (!isSound(output)) return PF_Err_NONE;
  clear(output);
  if (!hasAllParameters(in, params)) return PF_Err_NONE;

  const FrameSize size{output.width, output.height};
  RenderSettings settings =
      settingsOf(readValues(params), {size, in.width, in.quality == PF_Quality_HI});
  moduleState().frameSize = size;
  const MutableImageView outputImage = outputView(output);
  const ImageView source = inputView(params[kInputLayer]->u.ld, outputImage.format);
  PageArray<float> sourceIntensityMap;
  PageArray<std::uint8_t> alphaMask;
  if (settings.standardPath == StandardPath::SourceAsRasterMask) {
    sourceIntensityMap = buildSourceIntensityMap(source, settings.frameWidth, settings.frameHeight);
  } else if (settings.standardPath == StandardPath::ContourAlphaChannel) {
    alphaMask = buildAlphaMask(source, settings.frameWidth, settings.frameHeight);
  }
  const MaskPath mask(in, settings.pathMaskId);
  ContourEmitter contour;
  if (settings.standardPath == StandardPath::ContourAlphaChannel && mask.outline() == nullptr) {
    const ImageView mask{alphaMask.get(), settings.frameWidth, settings.frameHeight,
                         settings.frameWidth, PixelFormat::Mask8};
    contour = buildContourEmitter(mask, settings.resolutionScale);
  }
  // A mask takes the place of every shape, and the Bezier that of a mask that cannot be had.
  if (settings.pathMaskId != 0) settings.standardPath = StandardPath::Bezier;
  Emitter emitter = prepareEmitter(settings);
  emitter.maskOutline = mask.outline();
  emitter.contour = &contour;
  emitter.source = source;
  emitter.sourceIntensityMap = sourceIntensityMap.get();

  if (hasHandleCallbacks(in)) {
    const LockedHandle locked(*in.utils, out.sequence_data);
    if (auto* state = static_cast<SequenceState*>(locked.get())) {
      if (in.current_time < 1) reset(*state);
      renderStars(settings, emitter, outputImage, *state);
    }
  }
  mixWithInput(outputImage, source, settings.mixWithOriginal);
  return PF_Err_NONE;
}

}  // namespace brisel
