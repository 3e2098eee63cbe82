#include "effect/frame.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <optional>

#include "core/random.h"
#include "effect/input_shapes.h"
#include "effect/settings.h"
#include "engine/contour_emitter.h"
#include "engine/emitter.h"
#include "engine/mask_outline.h"
#include "engine/particle.h"
#include "engine/simulation.h"
#include "platform/pages.h"
#include "render/kernels.h"
#include "render/painter.h"
#include "render/stars/compose.h"

namespace brisel {
namespace {

std::size_t arrayBytes(std::int32_t capacity) {
  return static_cast<std::size_t>(capacity) * sizeof(Particle);
}

/// The settings of one frame and its emitter, with what the emitter points to.
struct PreparedFrame {
  RenderSettings settings;
  InputShapes ownShapes;  // where there are none that are kept
  ContourEmitter noContour;
  Emitter emitter;
  bool isComplete = true;  // there was memory for all that the frame's stars need

  PreparedFrame(const Values& values, const FrameViews& views, const MaskOutline* mask)
      : settings(settingsOf(
            values,
            {{views.output.width, views.output.height}, views.layerWidth, views.highQuality})) {
    const FrameSize size{settings.frameWidth, settings.frameHeight};
    InputShapes& shapes = views.inputShapes != nullptr ? *views.inputShapes : ownShapes;
    if (settings.pathMaskId == 0) mask = nullptr;
    const float* map = nullptr;
    const ContourEmitter* contour = &noContour;
    if (settings.standardPath == StandardPath::SourceAsRasterMask) {
      map = shapes.intensityMap(views.input, size);
      isComplete = map != nullptr;
    } else if (settings.standardPath == StandardPath::ContourAlphaChannel && mask == nullptr) {
      const ContourEmitter* found = shapes.contour(views.input, size, settings.resolutionScale);
      isComplete = found != nullptr;
      if (isComplete) contour = found;
    }
    // A mask takes the place of every shape, and the Bezier that of a missing mask.
    if (settings.pathMaskId != 0) settings.standardPath = StandardPath::Bezier;
    emitter = prepareEmitter(settings);
    emitter.maskOutline = mask;
    emitter.contour = contour;
    emitter.source = views.input;
    emitter.sourceIntensityMap = map;
  }
  PreparedFrame(const PreparedFrame&) = delete;
  PreparedFrame& operator=(const PreparedFrame&) = delete;
};

void advance(PreparedFrame& frame, const FrameState& state) {
  RenderSettings& settings = frame.settings;
  StarPopulation population;
  population.stepIndex = static_cast<float>(state.stepCounter);
  ++state.stepCounter;
  if (settings.maximumNumberOfStars != state.capacity &&
      !resizeStars(state, settings.maximumNumberOfStars)) {
    frame.isComplete = frame.isComplete && settings.maximumNumberOfStars <= 0;
    settings.maximumNumberOfStars = std::min(settings.maximumNumberOfStars, state.capacity);
  }
  population.stars = state.stars;
  population.capacity = state.capacity;
  population.starCount = state.starCount;
  population.emissionAccumulator = state.emissionAccumulator;

  simulationStep(settings, frame.emitter, state.random, population);
  state.starCount = population.starCount;
  state.emissionAccumulator = population.emissionAccumulator;
}

/// Random numbers and lasting changes of stars happen here as well, and need no list of sprites.
void compose(const PreparedFrame& frame, const FrameState& state, SpriteList* sprites) {
  state.sprites.rainbowShift = frame.settings.colorRainbow;
  drawAllStars({frame.settings, state.random, state.sprites, sprites},
               {state.stars, static_cast<std::size_t>(state.starCount)});
}

}  // namespace

bool resizeStars(const FrameState& state, std::int32_t capacity) {
  if (capacity <= 0) return false;
  auto* stars = static_cast<Particle*>(allocatePages(arrayBytes(capacity)));
  if (stars == nullptr) return false;
  state.starCount = std::min(state.starCount, capacity);
  if (state.stars != nullptr) std::memcpy(stars, state.stars, arrayBytes(state.starCount));
  releaseStars(state.stars, state.capacity);
  state.stars = stars;
  state.capacity = capacity;
  return true;
}

void releaseStars(Particle* stars, std::int32_t capacity) {
  releasePages(stars, arrayBytes(capacity));
}

void resetState(const FrameState& state) {
  state.starCount = 0;
  state.stepCounter = 0;
  state.emissionAccumulator = 0.0f;
  state.random.seedRandom(0);
  state.sprites = SpriteState{};
}

bool renderFrame(const Values& values, const FrameViews& views, const MaskOutline* mask,
                 const FrameState* state) {
  std::optional<Painter> own;
  Painter& painter = views.painter != nullptr ? *views.painter : own.emplace();
  PreparedFrame frame(values, views, mask);
  if (state != nullptr) advance(frame, *state);
  const ImageView& backdrop = views.backdrop.bytes != nullptr ? views.backdrop : views.input;
  const PaintTarget target{.output = views.output,
                           .input = backdrop,
                           .mix = frame.settings.mixWithOriginal,
                           .whenRowsAreDone = views.whenRowsAreDone};
  painter.paint(target, [&](SpriteList& sprites) {
    if (state != nullptr) compose(frame, *state, &sprites);
  });
  return frame.isComplete;
}

bool stepFrame(const Values& values, const FrameViews& views, const MaskOutline* mask,
               const FrameState& state) {
  PreparedFrame frame(values, views, mask);
  advance(frame, state);
  compose(frame, state, nullptr);
  return frame.isComplete;
}

}  // namespace brisel
