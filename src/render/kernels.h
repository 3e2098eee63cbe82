// The inner loops of drawing, once per instruction set. All of them give the same bytes.
#pragma once

#include <span>

#include "core/color.h"
#include "core/image_view.h"
#include "core/options.h"

namespace brisel {

struct Drawing;
enum class BlendRule : std::uint8_t;
enum class GlowProfile : std::uint8_t;
enum class BlicsProfile : std::uint8_t;

/// What sprites.h and mix.h describe, compiled for one instruction set.
struct Kernels {
  const char* name;  // of the instruction set
  int lanes;         // pixels at a time
  void (*rayStar)(Drawing& drawing, StarType type, float x, float y, float size, float width,
                  float angleDegrees, float rays, Rgb color, float value);
  void (*crossStar)(Drawing& drawing, float radius, float x, float y, float angleRadians, Rgb color,
                    float value);
  void (*glowStar)(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                   GlowProfile profile);
  void (*blicsStar)(Drawing& drawing, float x, float y, float size, Rgb color, float value,
                    BlicsProfile profile, float ringWidth);
  /// Blends `pen` into `count` neighbouring pixels, with the values given up to a whole number of
  /// lanes.
  void (*values)(const MutableImageView& image, BlendRule rule, Rgb pen, std::int32_t x,
                 std::int32_t y, std::int32_t count, const float* values);
  void (*mix)(const MutableImageView& output, const ImageView& input, MixMode mode);
};

/// Those that this processor can run, narrowest first; the first is the plain one.
std::span<const Kernels* const> availableKernels();

/// Those called `name`; the widest available when it is null or names none of them.
const Kernels& kernelsNamed(const char* name);

/// Those that frames are drawn with: the widest available, until others are chosen.
const Kernels& activeKernels();
void chooseKernels(const Kernels& kernels);

}  // namespace brisel
