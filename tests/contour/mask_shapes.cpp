#include "tests/contour/mask_shapes.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace reference {
namespace {

constexpr std::uint8_t kOpaque = 255;

/// Fills where `covers(x, y)` holds at the pixel's center.
template <class Covers>
Mask fill(Mask mask, Covers covers) {
  for (int row = 0; row < mask.height; ++row) {
    for (int column = 0; column < mask.width; ++column) {
      if (covers(column + 0.5, row + 0.5)) mask.at(row, column) = kOpaque;
    }
  }
  return mask;
}

/// A round dot, a box or a ring somewhere on the mask, possibly cut out of it.
void addBlob(Mask& mask, std::mt19937& random) {
  std::uniform_real_distribution<double> share(0.0, 1.0);
  const double x = share(random) * mask.width, y = share(random) * mask.height;
  const double across = 1 + share(random) * mask.width / 2;
  const double down = 1 + share(random) * mask.height / 2;
  const double angle = share(random) * 3.2;
  const double hole = share(random) < 0.3 ? 0.7 : 0.0;
  const bool box = share(random) < 0.5;
  const std::uint8_t value = share(random) < 0.7 ? kOpaque : 0;
  for (int row = 0; row < mask.height; ++row) {
    for (int column = 0; column < mask.width; ++column) {
      const double dx = column - x, dy = row - y;
      const double u = std::fabs(dx * std::cos(angle) + dy * std::sin(angle)) / across;
      const double v = std::fabs(dy * std::cos(angle) - dx * std::sin(angle)) / down;
      const double distance = box ? std::max(u, v) * 1.5 : std::hypot(u, v);
      if (distance <= 1 && distance >= hole) mask.at(row, column) = value;
    }
  }
}

Mask enlarged(Mask source, int factor, int maxSide) {
  Mask result =
      empty(std::min(source.width * factor, maxSide), std::min(source.height * factor, maxSide));
  for (int row = 0; row < result.height; ++row) {
    for (int column = 0; column < result.width; ++column) {
      result.at(row, column) = source.at(row / factor, column / factor);
    }
  }
  return result;
}

}  // namespace

Mask empty(int width, int height) {
  Mask mask{width, height, {}};
  mask.cells.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  return mask;
}

Mask disc(int width, int height) {
  const double radius = 0.4 * std::min(width, height);
  return fill(empty(width, height), [=](double x, double y) {
    return std::hypot(x - width / 2.0, y - height / 2.0) <= radius;
  });
}

Mask title(int width, int height) {
  constexpr int kLetters = 9;
  const double cell = width / (kLetters + 1.0);
  const double stroke = cell / 12;
  return fill(empty(width, height), [=](double x, double y) {
    const int letter = static_cast<int>(x / cell - 0.5);
    const double u = x - (letter + 1) * cell;
    const double v = y - height / 2.0;
    if (letter < 0 || letter >= kLetters || std::fabs(v) > cell / 2) return false;
    switch (letter % 3) {
      case 0:
        return std::fabs(std::hypot(u, v) - cell * 0.38) <= stroke;
      case 1:
        return std::fabs(u) <= stroke;
      default:
        return std::fabs(std::fabs(u) - (v / cell + 0.5) * cell * 0.3) <= stroke;
    }
  });
}

Mask noise(int width, int height, double density, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::bernoulli_distribution opaque(density);
  Mask mask = empty(width, height);
  for (std::uint8_t& cell : mask.cells) cell = opaque(random) ? kOpaque : 0;
  return mask;
}

Mask checkerboard(int width, int height) {
  return fill(empty(width, height), [](double x, double y) {
    return (static_cast<int>(x) + static_cast<int>(y)) % 2 == 0;
  });
}

Mask notchedSpiral(int width, int height) {
  constexpr int kWall = 3;
  constexpr int kPitch = 5;
  Mask mask = empty(width, height);
  int left = 2, top = 2, right = width - 3, bottom = height - 3;
  const auto stamp = [&](int row, int column, bool across, int along) {
    const int thickness = along % 4 == 0 ? 1 : kWall;
    for (int i = 0; i < thickness; ++i) {
      const int r = row + (across ? i : 0), k = column + (across ? 0 : i);
      if (r >= 0 && r < height && k >= 0 && k < width) mask.at(r, k) = kOpaque;
    }
  };
  // Each turn of the wall starts where the last one ended, a pitch further in.
  while (right - left > 2 * kPitch && bottom - top > 2 * kPitch) {
    for (int k = left; k <= right; ++k) stamp(top, k, true, k - left);
    for (int r = top; r <= bottom; ++r) stamp(r, right - kWall + 1, false, r - top);
    for (int k = right; k >= left; --k) stamp(bottom - kWall + 1, k, true, right - k);
    for (int r = bottom; r >= top + kPitch; --r) stamp(r, left, false, bottom - r);
    for (int k = left; k <= left + kPitch; ++k) stamp(top + kPitch, k, true, k - left);
    left += kPitch;
    top += kPitch;
    right -= kPitch;
    bottom -= kPitch;
  }
  return mask;
}

Mask anyShape(int maxSide, std::uint32_t seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> side(1, maxSide);
  std::uniform_real_distribution<double> density(0.0, 1.0);
  const int width = side(random), height = side(random);
  switch (random() % 4) {
    case 0:
      return noise(width, height, density(random), seed);
    case 1: {
      const int factor = 2 + static_cast<int>(random() % 5);
      return enlarged(noise(width, height, density(random), seed), factor, maxSide);
    }
    case 2:
      return random() % 4 == 0 ? checkerboard(width, height) : notchedSpiral(width, height);
    default:
      break;
  }
  Mask mask = empty(width, height);
  for (int blobs = 1 + static_cast<int>(random() % 12); blobs > 0; --blobs) addBlob(mask, random);
  if (random() % 2 == 0) {
    for (std::uint8_t& cell : mask.cells) cell = random() % 100 == 0 ? kOpaque - cell : cell;
  }
  return mask;
}

Mask relabeled(Mask mask, std::uint32_t seed) {
  constexpr std::uint8_t kLabels[] = {kOpaque, 7, 121, 9};
  std::mt19937 random(seed);
  const auto count = static_cast<std::uint32_t>(2 + random() % 3);
  for (std::uint8_t& cell : mask.cells) {
    if (cell != 0) cell = kLabels[random() % count];
  }
  return mask;
}

}  // namespace reference
