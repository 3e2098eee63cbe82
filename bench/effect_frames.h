// The effect by itself, beside which plug-ins are measured.
#pragma once

#include <cstdint>
#include <vector>

#include "core/image_view.h"
#include "effect/instance.h"
#include "render/painter.h"

namespace bench {

inline constexpr int kClipFrames = 100;  // after which the clip begins anew

/// Frames with the effect's defaults, the stars added to the input.
class EffectFrames {
 public:
  explicit EffectFrames(const brisel::ImageView& input);  // which is borrowed

  void render(int frame) { instance_.render(values_, frame, views_); }

 private:
  std::vector<std::uint8_t> output_;
  brisel::Painter painter_;
  brisel::FrameViews views_;
  brisel::Values values_;
  brisel::Instance instance_;
};

}  // namespace bench
