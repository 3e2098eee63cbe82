// Scenes to measure by, and one scene's frames stage by stage.
#pragma once

#include <vector>

#include "core/random.h"
#include "effect/values.h"
#include "engine/particle.h"
#include "render/sprite_list.h"
#include "render/stars/compose.h"

namespace bench {

struct ParamNumber {
  brisel::ParamIndex index;
  double number;  // as Values::setNumber() takes it
};

/// 500 glows of size 25 with halo Normal and blink Rainbow: what differs from the defaults.
inline constexpr ParamNumber kHeavyScene[] = {
    {brisel::kType, 9},
    {brisel::kSize, 25},
    {brisel::kTypeOfHalo, 3},
    {brisel::kTypeOfBlink, 4},
    {brisel::kMaximumNumberOfStars, 500},
    {brisel::kIntensity, 500},
    {brisel::kTimeLife, 100},
};
brisel::Values heavyScene(brisel::FrameSize size);

/// As many stars as there can be, all over the frame, which live on; with a halo and a blink if
/// `hasElements`. They are small, so that painting costs little beside all else.
brisel::Values crowd(brisel::FrameSize size, brisel::StarType type, bool hasElements);

/// What an instance does, in the same order and with the same bytes, each stage by itself.
class Stages {
 public:
  Stages(const brisel::Values& values, brisel::FrameSize size) : values_(values), size_(size) {}

  void step();                                // to the stars of the next frame
  void compose(brisel::SpriteList* sprites);  // the frame's; null: into nothing
  brisel::MixMode mix() const { return settings_.mixWithOriginal; }
  int starCount() const { return population_.starCount; }

 private:
  brisel::Values values_;
  brisel::FrameSize size_;
  brisel::RenderSettings settings_;
  brisel::RandomGenerator random_;
  brisel::SpriteState state_;
  std::vector<brisel::Particle> stars_;
  brisel::StarPopulation population_;
};

}  // namespace bench
