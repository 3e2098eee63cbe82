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

  /// The two halves of paint(), so that a list that is there can be painted again and again.
  void list(const Compose& compose, int times);  // up to SpriteList::kMostSprites - 1 times
  void paintListed();

  void clear();

  /// The pixels that one painting changes on an empty frame.
  std::int64_t coveredPixels(const Compose& compose);

 private:
  std::vector<std::uint16_t> pixels_;
  brisel::RenderSettings settings_;
  brisel::RandomGenerator random_;
  brisel::SpriteState state_;
  brisel::MutableImageView image_;
  const brisel::Kernels& kernels_;
  brisel::Painter painter_;
  brisel::SpriteList listed_;
  brisel::PixelGrid grid_;
};

}  // namespace bench
