#include "scene/add_light.h"

#include <algorithm>

namespace scene {
namespace {

// Pixels of four channels, alpha first.
template <typename Channel>
void addPixel(Channel* star, const Channel* below, float fullScale) {
  const float alpha = std::min(static_cast<float>(star[0] + below[0]), fullScale);
  for (int i = 1; i < 4; ++i) {
    const float light = static_cast<float>(star[i]) * static_cast<float>(star[0]) +
                        static_cast<float>(below[i]) * static_cast<float>(below[0]);
    star[i] = static_cast<Channel>(std::min(light / alpha + 0.5F, fullScale));
  }
  star[0] = static_cast<Channel>(alpha);
}

template <typename Channel>
void addRow(std::uint8_t* picture, const std::uint8_t* below, std::int32_t width, float fullScale) {
  auto* star = reinterpret_cast<Channel*>(picture);
  const auto* under = reinterpret_cast<const Channel*>(below);
  for (const auto* end = star + std::ptrdiff_t{4} * width; star != end; star += 4, under += 4) {
    if (under[0] == 0) continue;
    if (star[0] == 0) {
      std::copy_n(under, 4, star);
    } else {
      addPixel(star, under, fullScale);
    }
  }
}

}  // namespace

void addLight(const brisel::MutableImageView& picture, const brisel::ImageView& below) {
  for (std::int32_t y = 0; y < picture.height; ++y) {
    const auto add = picture.isDeep() ? addRow<std::uint16_t> : addRow<std::uint8_t>;
    add(picture.at(0, y), below.at(0, y), picture.width, picture.fullScale());
  }
}

}  // namespace scene
