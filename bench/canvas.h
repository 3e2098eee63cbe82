// A frame to measure painting on, and how many of its pixels a sprite really covers.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "core/random.h"
#include "core/render_settings.h"
#include "render/stars/compose.h"

namespace bench {

class Canvas {
 public:
  static constexpr std::int32_t kWidth = 1024;
  static constexpr std::int32_t kHeight = 1024;

  Canvas(bool deep, const brisel::Kernels& kernels);

  const brisel::Composition& composition() const { return composition_; }
  void clear();

  /// The pixels that `paint` changes on an empty frame.
  std::int64_t coveredPixels(const std::function<void()>& paint);

 private:
  std::vector<std::uint16_t> pixels_;
  brisel::RenderSettings settings_;
  brisel::RandomGenerator random_;
  brisel::SpriteState state_;
  brisel::MutableImageView image_;
  brisel::Painter painter_;
  brisel::Composition composition_{settings_, random_, state_, painter_};
};

}  // namespace bench
