#include "cli/pictures/add_light.h"

#include <algorithm>
#include <span>

namespace cli {
namespace {

template <typename Pixel>
Pixel sum(const Pixel& star, const Pixel& below, float fullScale) {
  const float alpha = std::min(static_cast<float>(star.alpha + below.alpha), fullScale);
  const auto channel = [&](auto a, auto b) {
    const float light = static_cast<float>(a) * static_cast<float>(star.alpha) +
                        static_cast<float>(b) * static_cast<float>(below.alpha);
    return static_cast<decltype(a)>(std::min(light / alpha + 0.5F, fullScale));
  };
  return {static_cast<decltype(star.alpha)>(alpha), channel(star.red, below.red),
          channel(star.green, below.green), channel(star.blue, below.blue)};
}

template <typename Pixel>
void addRow(std::span<Pixel> picture, std::span<const Pixel> below, float fullScale) {
  for (std::size_t x = 0; x < picture.size(); ++x) {
    if (below[x].alpha == 0) continue;
    picture[x] = picture[x].alpha == 0 ? below[x] : sum(picture[x], below[x], fullScale);
  }
}

}  // namespace

void addLight(hostkit::World& picture, const hostkit::World& below) {
  for (A_long y = 0; y < picture.height(); ++y) {
    if (picture.depth() == hostkit::Depth::k8) {
      addRow(picture.row8(y), below.row8(y), 255);
    } else {
      addRow(picture.row16(y), below.row16(y), 32768);
    }
  }
}

}  // namespace cli
