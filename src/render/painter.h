// Sprites into pixels.
#pragma once

#include "core/image_view.h"
#include "render/kernels.h"
#include "render/raster/grid.h"
#include "render/sprites/specs.h"

namespace brisel {

/// Paints sprites into one image, each within the image only and at a cost that follows the pixels
/// it covers there. One thread at a time; the image is borrowed.
class Painter {
 public:
  Painter(const MutableImageView& image, const Kernels& kernels)
      : image_(image), kernels_(kernels) {}

  void paint(const DotSpec& dot);
  void paint(const GlowSpec& glow);
  void paint(const BlicsSpec& blics);
  void paint(const CrossSpec& cross);
  void paint(const RaySpec& rays);

 private:
  MutableImageView image_;
  const Kernels& kernels_;
  PixelGrid grid_;  // the current sprite's; kept here so that its memory is reused
};

}  // namespace brisel
