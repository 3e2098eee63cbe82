// A frame to measure drawing on, and how many of its pixels a sprite really covers.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "core/random.h"
#include "core/render_settings.h"
#include "render/drawing.h"

namespace bench {

class Canvas {
 public:
  static constexpr std::int32_t kWidth = 1024;
  static constexpr std::int32_t kHeight = 1024;

  Canvas(bool deep, const brisel::Kernels& kernels);

  brisel::Drawing& drawing() { return drawing_; }
  void clear();

  /// The pixels of the frame that `draw` changes on an empty frame.
  std::int64_t coveredPixels(const std::function<void(brisel::Drawing&)>& draw);

 private:
  std::vector<std::uint16_t> pixels_;
  brisel::RenderSettings settings_;
  brisel::RandomGenerator random_;
  brisel::DrawingState state_;
  brisel::Drawing drawing_;
};

}  // namespace bench
