#include "cli/scene/scene_plan.h"

#include <algorithm>

#include "cli/support/errors.h"
#include "cli/support/numbers.h"

namespace cli {
namespace {

constexpr FrameSize kDefaultSize{1280, 720};
constexpr int kDefaultFrames = 100;

FrameSize sizeFromOption(const std::string& text) {
  const auto size = parseSize(text);
  const auto isSide = [](int side) { return side >= 1 && side <= kMaxSide; };
  if (!size || !isSide(size->first) || !isSide(size->second)) {
    throw UsageError("--size " + inQuotes(text) + ": a size reads WIDTHxHEIGHT, each from 1 to " +
                     std::to_string(kMaxSide));
  }
  return {size->first, size->second};
}

FrameRate rateFromOption(const std::string& text) {
  const auto rate = frameRateFromText(text);
  if (!rate) {
    throw UsageError("--fps " + inQuotes(text) + ": a frame rate is a number above 0, up to " +
                     numberText(kMaxFramesPerSecond) + ", or a fraction such as 30000/1001");
  }
  return *rate;
}

// Rounded up: a host gives the rest of a side a pixel, too.
FrameSize reduced(FrameSize size, int reduction) {
  return {(size.width + reduction - 1) / reduction, (size.height + reduction - 1) / reduction};
}

MediaInfo probeInput(const Scene& scene) {
  try {
    return probeMedia(findSource(scene.input, scene.reading), scene.reading);
  } catch (const WorkError& error) {
    if (scene.inputPlace.empty()) throw;
    throw WorkError(scene.inputPlace + ": " + error.what());
  }
}

}  // namespace

ScenePlan planScene(Scene scene) {
  ScenePlan plan{std::move(scene), kDefaultSize, kDefaultSize,
                 kDefaultFrames,   FrameRate{},  std::nullopt};
  if (!plan.scene.input.empty()) {
    plan.input = probeInput(plan.scene);
    plan.layer = {std::min(plan.input->size.width, kMaxSide),
                  std::min(plan.input->size.height, kMaxSide)};
    if (!plan.input->isStill()) plan.rate = plan.input->rate;
  }
  plan.layer = plan.scene.size.value_or(plan.layer);
  plan.size = reduced(plan.layer, plan.scene.reduction);
  plan.rate = plan.scene.rate.value_or(plan.rate);
  for (Layer& layer : plan.scene.layers) {
    for (Setting& setting : layer.settings) {
      countInFrames(setting.keys, plan.rate, setting.label);
    }
    if (layer.mask) countInFrames(layer.mask->keys, plan.rate, "path");
  }
  if (plan.input && !plan.input->isStill()) {
    plan.frames = std::min(framesAtRate(*plan.input, plan.rate), kMaxFrames);
  }
  plan.frames = plan.scene.frames.value_or(plan.frames);
  return plan;
}

hostkit::World worldFor(const ScenePlan& plan) {
  return {plan.size.width, plan.size.height, plan.scene.depth};
}

void applyOptions(Scene& scene, const SceneOptions& options) {
  if (!options.input.empty()) {
    scene.input = options.input;
    scene.inputPlace.clear();
  }
  scene.reading = options.reading;
  if (!options.size.empty()) scene.size = sizeFromOption(options.size);
  if (!options.scale.empty()) scene.reduction = parseInteger(options.scale.substr(2)).value();
  if (options.preroll) scene.preroll = *options.preroll;
  if (!options.rate.empty()) scene.rate = rateFromOption(options.rate);
  if (!options.depth.empty()) scene.depth = options.depth == "16" ? Depth::k16 : Depth::k8;
  if (!options.quality.empty()) scene.highQuality = options.quality == "high";
  for (Layer& layer : scene.layers) {
    for (const std::string& name : options.presets) {
      layer.presets.push_back(presetFromOption(name));
    }
    for (const std::string& text : options.settings) {
      layer.settings.push_back(settingFromOption(text));
    }
  }
}

}  // namespace cli
