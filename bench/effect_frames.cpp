#include "effect_frames.h"

#include <cstddef>

namespace bench {

EffectFrames::EffectFrames(const brisel::ImageView& input)
    : output_(static_cast<std::size_t>(input.rowBytes * input.height)),
      values_({input.width, input.height}) {
  views_.output = {output_.data(), input.width, input.height, input.rowBytes, input.format};
  views_.input = input;
  views_.painter = &painter_;
  values_.setNumber(brisel::kMixWithOriginal, 3);
}

}  // namespace bench
