#include "cli/scene/scene_plan.h"

#include <algorithm>

#include "cli/support/errors.h"
#include "cli/support/memory.h"
#include "scene/text/numbers.h"

namespace cli {
namespace {

FrameSize sizeFromOption(const std::string& text) {
  const auto size = scene::parseSize(text);
  const auto isSide = [](int side) { return side >= 1 && side <= scene::kMaxSide; };
  if (!size || !isSide(size->first) || !isSide(size->second)) {
    throw UsageError("--size " + inQuotes(text) + ": a size reads WIDTHxHEIGHT, each from 1 to " +
                     std::to_string(scene::kMaxSide));
  }
  return {size->first, size->second};
}

scene::FrameRate rateFromOption(const std::string& text) {
  const auto rate = scene::frameRateFromText(text);
  if (!rate) {
    throw UsageError("--fps " + inQuotes(text) + ": a frame rate is a number above 0, up to " +
                     scene::numberText(scene::kMaxFramesPerSecond) +
                     ", or a fraction such as 30000/1001");
  }
  return *rate;
}

// Rounded up: a host gives the rest of a side a pixel, too.
FrameSize reduced(FrameSize size, int reduction) {
  return {(size.width + reduction - 1) / reduction, (size.height + reduction - 1) / reduction};
}

void applyOptions(scene::Scene& scene, const SceneOptions& options) {
  if (!options.input.empty()) {
    scene.input = options.input;
    scene.inputPlace.clear();
  }
  if (!options.size.empty()) scene.size = sizeFromOption(options.size);
  if (options.preroll) scene.preroll = *options.preroll;
  if (!options.rate.empty()) scene.rate = rateFromOption(options.rate);
  if (!options.depth.empty()) scene.depth = options.depth == "16" ? 16 : 8;
  if (!options.quality.empty()) scene.highQuality = options.quality == "high";
  for (scene::Layer& layer : scene.layers) {
    for (const std::string& name : options.presets) {
      layer.presets.push_back(presetFromOption(name));
    }
    for (const std::string& text : options.settings) {
      layer.settings.push_back(settingFromOption(text));
    }
  }
}

scene::FileAccess accessBy(const SceneOptions& options) {
  return {{options.allowed.begin(), options.allowed.end()}, "--allow"};
}

// A picture that fills the memory by itself, at 8 bytes a pixel, need not be decoded to be refused.
InputChoices readingOf(const SceneOptions& options, std::uint64_t memoryLimit) {
  InputChoices reading = options.reading;
  const auto most = static_cast<std::int64_t>(std::max<std::uint64_t>(1, memoryLimit / 8));
  reading.mostPixels = std::min(reading.mostPixels, most);
  return reading;
}

}  // namespace

MediaInfo probeInput(const scene::Scene& scene, const InputChoices& reading,
                     const SceneOptions& options) {
  if (scene.inputPlace.empty()) return probeMedia(findSource(scene.input, reading), reading);
  try {
    const auto check = [&](const std::filesystem::path& file) {
      checkAccess(file, scene.file, accessBy(options), "the input");
    };
    return probeMedia(findSource(scene.input, reading, check), reading);
  } catch (const WorkError& error) {
    throw WorkError(scene.inputPlace + ": " + error.what());
  }
}

scene::Scene readScene(const std::filesystem::path& file, const SceneOptions& options) {
  return scene::readScene(file, accessBy(options));
}

ScenePlan planScene(scene::Scene scene, const SceneOptions& options, const ProbeInput& probe) {
  applyOptions(scene, options);
  ScenePlan plan;
  plan.scene = std::move(scene);
  plan.memoryLimit = options.memoryLimit.value_or(availableMemory() / 4 * 3);
  plan.reading = readingOf(options, plan.memoryLimit);
  if (!plan.scene.input.empty()) {
    plan.input = probe(plan.scene, plan.reading, options);
    plan.layer = {std::min(plan.input->size.width, scene::kMaxSide),
                  std::min(plan.input->size.height, scene::kMaxSide)};
    if (!plan.input->isStill()) plan.rate = plan.input->rate;
  }
  plan.layer = plan.scene.size.value_or(plan.layer);
  if (!options.scale.empty()) plan.reduction = scene::parseInteger(options.scale.substr(2)).value();
  plan.size = reduced(plan.layer, plan.reduction);
  plan.depth = static_cast<Depth>(plan.scene.depth);
  plan.rate = plan.scene.rate.value_or(plan.rate);
  if (plan.input && !plan.input->isStill()) {
    plan.frames = std::min(framesAtRate(*plan.input, plan.rate), scene::kMaxFrames);
  }
  plan.frames = plan.scene.frames.value_or(plan.frames);
  return plan;
}

hostkit::World worldFor(const ScenePlan& plan) {
  return {plan.size.width, plan.size.height, plan.depth};
}

void checkOptions(const SceneOptions& options) {
  scene::Scene noScene;
  applyOptions(noScene, options);
}

scene::PresetChoice presetFromOption(const std::string& name) {
  return {name, "--preset " + inQuotes(name), scene::Origin::Option};
}

scene::Setting settingFromOption(const std::string& text) {
  const std::string place = "--set " + inQuotes(text);
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    throw UsageError(place + ": a setting reads \"LABEL=VALUE\", such as \"Size=40\"");
  }
  return {std::string(scene::trimmed(text.substr(0, equals))),
          {{{.time = 0, .place = place}, scene::userValueFromText(text.substr(equals + 1))}},
          place,
          scene::Origin::Option};
}

}  // namespace cli
