#include "look/star_layers.h"

#include <algorithm>

namespace brisel {

void StarLayers::draw(const Look& look, std::size_t layer, std::int32_t frame, const Values& values,
                      const FrameViews& views, const ValuesAt& valuesAt) {
  histories_.resize(look.layerCount());
  const std::int32_t preroll = look.preroll();
  const auto pass = [&](Instance& instance, std::int32_t step) {
    const std::int32_t shown = std::max(step - preroll, 0);
    const auto mask = look.maskAt(layer, shown);
    instance.step(valuesAt(layer, shown), step, views, mask ? &*mask : nullptr);
  };
  Instance& instance = histories_[layer].goTo(frame + preroll, pass);
  const auto mask = look.maskAt(layer, frame);
  instance.render(values, frame + preroll, views, mask ? &*mask : nullptr);
  histories_[layer].moveOn();
}

}  // namespace brisel
