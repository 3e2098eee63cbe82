#include "scene.h"

#include "effect/settings.h"
#include "engine/simulation.h"

namespace bench {

brisel::Values heavyScene(brisel::FrameSize size) {
  brisel::Values values(size);
  for (const auto& [index, number] : kHeavyScene) values.setNumber(index, number);
  return values;
}

brisel::Values crowd(brisel::FrameSize size, brisel::StarType type, bool hasElements) {
  brisel::Values values(size);
  values.setNumber(brisel::kStandardPath, 7);
  values.setNumber(brisel::kInitialSpeed, 0.1);
  values.setNumber(brisel::kMaximumNumberOfStars, 30000);
  values.setNumber(brisel::kIntensity, 10000);
  values.setNumber(brisel::kTimeLife, 10000);
  values.setNumber(brisel::kType, static_cast<int>(type) + 1);
  values.setNumber(brisel::kSize, 0.5);
  values.setNumber(brisel::kTypeOfHalo, hasElements ? 3 : 1);
  values.setNumber(brisel::kTypeOfBlink, hasElements ? 4 : 1);
  return values;
}

void Stages::step() {
  settings_ = settingsOf(values_, {.size = size_, .highQuality = true});
  const brisel::Emitter emitter = prepareEmitter(settings_);
  stars_.resize(static_cast<std::size_t>(settings_.maximumNumberOfStars));
  population_.stars = stars_.data();
  population_.capacity = settings_.maximumNumberOfStars;
  simulationStep(settings_, emitter, random_, population_);
  population_.stepIndex += 1.0f;
}

void Stages::compose(brisel::SpriteList* sprites) {
  state_.rainbowShift = settings_.colorRainbow;
  brisel::drawAllStars({settings_, random_, state_, sprites},
                       {population_.stars, static_cast<std::size_t>(population_.starCount)});
}

}  // namespace bench
