#include "plotter.h"

namespace reference {

Hls toHls(brisel::Rgb color) {
  const auto [red, green, blue] = color;
  const int cMax = std::max({red, green, blue});
  const int cMin = std::min({red, green, blue});
  const int sum = cMax + cMin;
  const int delta = cMax - cMin;
  const int lightness = (sum * 240 + 255) / 510;
  if (delta == 0) return {160, lightness, 0};
  const int saturation = lightness <= 120 ? (delta * 240 + sum / 2) / sum
                                          : (delta * 240 + (510 - sum) / 2) / (510 - sum);
  const int rd = ((cMax - red) * 40 + delta / 2) / delta;
  const int gd = ((cMax - green) * 40 + delta / 2) / delta;
  const int bd = ((cMax - blue) * 40 + delta / 2) / delta;
  int hue = 0;
  if (red == cMax) {
    hue = bd - gd;
  } else if (green == cMax) {
    hue = 80 + rd - bd;
  } else {
    hue = 160 + gd - rd;
  }
  if (hue < 0) hue += 240;
  return {hue, lightness, saturation};
}

static int hueToChannel(int m1, int m2, int hue) {
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

brisel::Rgb toRgb(Hls color) {
  const auto [hue, l, s] = color;
  if (s == 0) return {l * 255 / 240, l * 255 / 240, l * 255 / 240};
  const int m2 = l <= 120 ? (l * (240 + s) + 120) / 240 : l + s - (l * s + 120) / 240;
  const int m1 = 2 * l - m2;
  return {(hueToChannel(m1, m2, hue + 80) * 255 + 120) / 240,
          (hueToChannel(m1, m2, hue) * 255 + 120) / 240,
          (hueToChannel(m1, m2, hue - 80) * 255 + 120) / 240};
}

void Plotter::recolour(Hls base, float hueShift, float lightness, float saturation) {
  pen = toRgb({toInt(real(base.hue) + hueShift), toInt(lightness), toInt(saturation)});
}

}  // namespace reference
