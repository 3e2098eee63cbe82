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

/// Whether the world's rows hold as many pixels as it claims.
bool isSound(const PF_LayerDef& world) {
  const bool deep = (world.world_flags & PF_WorldFlag_DEEP) != 0;
  return world.data != nullptr && world.width > 0 && world.height > 0 &&
         world.rowbytes / (deep ? 8 : 4) >= world.width;
}

/// Both layers are taken at the output's depth.
void readLayers(RenderSettings& s, const PF_LayerDef& input, const PF_LayerDef& output) {
  s.deepColor = (output.world_flags & PF_WorldFlag_DEEP) != 0;
  s.outputRowStride = s.deepColor ? output.rowbytes / 2 : output.rowbytes;
  s.inputRowStride = s.deepColor ? input.rowbytes / 2 : input.rowbytes;
  if (s.deepColor) {
    s.outputPixels16 = reinterpret_cast<std::uint16_t*>(output.data);
    s.inputPixels16 = reinterpret_cast<const std::uint16_t*>(input.data);
  } else {
    s.outputPixels = reinterpret_cast<std::uint8_t*>(output.data);
    s.inputPixels = reinterpret_cast<const std::uint8_t*>(input.data);
  }
  if (input.data != nullptr) {
    s.inputWidth = std::clamp(input.width, 0, std::max(s.inputRowStride / 4, 0));
    s.inputHeight = std::max(input.height, 0);
  }
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
void renderStars(RenderSettings& settings, const Emitter& emitter, SequenceState& state) {
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
  Drawing drawing{settings, randomGenerator(), drawingState, outputLayer(settings),
                  BlendRule::Over};
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
  readLayers(settings, params[kInputLayer]->u.ld, output);
  moduleState().frameSize = size;
  PageArray<float> sourceIntensityMap;
  PageArray<std::uint8_t> alphaMask;
  if (settings.standardPath == StandardPath::SourceAsRasterMask) {
    sourceIntensityMap = buildSourceIntensityMap(settings);
    settings.sourceIntensityMap = sourceIntensityMap.get();
  } else if (settings.standardPath == StandardPath::ContourAlphaChannel) {
    alphaMask = buildAlphaMask(settings);
  }
  const MaskPath mask(in, settings.pathMaskId);
  ContourEmitter contour;
  if (settings.standardPath == StandardPath::ContourAlphaChannel && mask.outline() == nullptr) {
    contour = buildContourEmitter(settings.frameWidth, settings.frameHeight, alphaMask.get(),
                                  settings.resolutionScale);
  }
  // A mask takes the place of every shape, and the Bezier that of a mask that cannot be had.
  if (settings.pathMaskId != 0) settings.standardPath = StandardPath::Bezier;
  Emitter emitter = prepareEmitter(settings);
  emitter.maskOutline = mask.outline();
  emitter.contour = &contour;

  if (hasHandleCallbacks(in)) {
    const LockedHandle locked(*in.utils, out.sequence_data);
    if (auto* state = static_cast<SequenceState*>(locked.get())) {
      if (in.current_time < 1) reset(*state);
      renderStars(settings, emitter, *state);
    }
  }
  mixWithInput(settings, settings.mixWithOriginal);
  return PF_Err_NONE;
}

}  // namespace brisel
