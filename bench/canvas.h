// A frame to measure painting on, and how many of its pixels a sprite really covers.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "core/random.h"
#include "core/render_settings.h"
#include "render/painter.h"
#include "render/stars/compose.h"

namespace bench {

class Canvas {
 public:
  static constexpr std::int32_t kWidth = 1024;
  static constexpr std::int32_t kHeight = 1024;

  Canvas(bool deep, const brisel::Kernels& kernels);

  using Compose = std::function<void(const brisel::Composition&)>;

  /// Composes as often as told, and paints it all on what is there.
  void paint(const Compose& compose, int times);
  void clear();

  /// The pixels that one painting changes on an empty frame.
  std::int64_t coveredPixels(const Compose& compose);

 private:
  std::vector<std::uint16_t> pixels_;
  brisel::RenderSettings settings_;
  brisel::RandomGenerator random_;
  brisel::SpriteState state_;
  brisel::MutableImageView image_;
  brisel::Painter painter_;
};

}  // namespace bench
