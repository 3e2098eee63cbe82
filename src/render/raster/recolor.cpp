#include "render/raster/recolor.h"

#include <algorithm>

namespace brisel {

Hls rgbToHls(Rgb color) {
  const std::int32_t cMax = std::max({color.red, color.green, color.blue});
  const std::int32_t cMin = std::min({color.red, color.green, color.blue});
  const std::int32_t sum = cMax + cMin;
  const std::int32_t delta = cMax - cMin;
  Hls hls;
  hls.lightness = (sum * 240 + 255) / 510;
  if (delta == 0) {
    hls.hue = 160;
    return hls;
  }
  const std::int32_t range = hls.lightness <= 120 ? sum : 510 - sum;
  hls.saturation = (delta * 240 + range / 2) / range;

  const auto share = [&](std::int32_t channel) {
    return ((cMax - channel) * 40 + delta / 2) / delta;
  };
  if (color.red == cMax) {
    hls.hue = share(color.blue) - share(color.green);
  } else if (color.green == cMax) {
    hls.hue = 80 + share(color.red) - share(color.blue);
  } else {
    hls.hue = 160 + share(color.green) - share(color.red);
  }
  if (hls.hue < 0) hls.hue += 240;
  return hls;
}

std::int32_t hueToChannel(std::int32_t m1, std::int32_t m2, std::int32_t hue) {
  if (hue < 0) {
    hue = hue % 240 + 240;
  } else if (hue > 240) {
    hue = (hue - 240) % 240;
  }
  if (hue < 40) return m1 + ((m2 - m1) * hue + 20) / 40;
  if (hue < 120) return m2;
  if (hue < 160) return m1 + ((m2 - m1) * (160 - hue) + 20) / 40;
  return m1;
}

Rgb hlsToRgb(Hls color) {
  const std::int32_t lightness = color.lightness;
  const std::int32_t saturation = color.saturation;
  if (saturation == 0) {
    const std::int32_t gray = lightness * 255 / 240;
    return {gray, gray, gray};
  }
  const std::int32_t m2 = lightness <= 120
                              ? (lightness * (240 + saturation) + 120) / 240
                              : lightness + saturation - (lightness * saturation + 120) / 240;
  const std::int32_t m1 = 2 * lightness - m2;
  const auto channel = [&](std::int32_t hue) {
    return (hueToChannel(m1, m2, hue) * 255 + 120) / 240;
  };
  // Whole turns change nothing; without them the shifts cannot overflow.
  const std::int32_t hue = color.hue % 240;
  return {channel(hue + 80), channel(hue), channel(hue - 80)};
}

Rgb recoloredEvenly(Rgb color, std::int32_t leastSaturation) {
  Hls hls = rgbToHls(color);
  hls.lightness = std::max(hls.lightness, 120);
  hls.saturation = std::max(hls.saturation, leastSaturation);
  return hlsToRgb(hls);
}

}  // namespace brisel
