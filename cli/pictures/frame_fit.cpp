#include "cli/pictures/frame_fit.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace cli {
namespace {

// Channels in floating point, interleaved and premultiplied, on the scale of the picture's depth.
struct Plane {
  int width;
  int height;
  std::vector<float> channels;

  Plane(int width, int height)
      : width(width),
        height(height),
        channels(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}
  float* pixel(int x, int y) {
    return &channels[4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                          static_cast<std::size_t>(x))];
  }
};

// The source samples that make one sample of the result; the weights add up to 1.
struct Taps {
  int first;
  std::vector<float> weights;
};

// Catmull-Rom: passes through the samples and stays sharp.
double cubicWeight(double distance) {
  const double d = std::abs(distance);
  if (d < 1) return 1 + d * d * (1.5 * d - 2.5);
  if (d < 2) return 2 + d * (-4 + d * (2.5 - 0.5 * d));
  return 0;
}

// Shrinking widens the kernel, so that every source sample counts.
std::vector<Taps> tapsFor(int from, int to) {
  const double step = static_cast<double>(from) / to;
  const double stretch = std::max(1.0, step);
  std::vector<Taps> all;
  for (int i = 0; i < to; ++i) {
    const double center = (i + 0.5) * step - 0.5;
    const int first = std::max(0, static_cast<int>(std::ceil(center - 2 * stretch)));
    const int last = std::min(from - 1, static_cast<int>(std::floor(center + 2 * stretch)));
    Taps taps{first, {}};
    double sum = 0;
    for (int k = first; k <= last; ++k) sum += cubicWeight((k - center) / stretch);
    for (int k = first; k <= last; ++k) {
      taps.weights.push_back(static_cast<float>(cubicWeight((k - center) / stretch) / sum));
    }
    all.push_back(std::move(taps));
  }
  return all;
}

void addScaled(const float* pixel, float weight, float* sum) {
  for (int c = 0; c < 4; ++c) sum[c] += weight * pixel[c];
}

Plane scaledAcross(Plane& source, int width) {
  const std::vector<Taps> taps = tapsFor(source.width, width);
  Plane result(width, source.height);
  for (int y = 0; y < result.height; ++y) {
    for (int x = 0; x < width; ++x) {
      const Taps& at = taps[static_cast<std::size_t>(x)];
      int from = at.first;
      for (const float weight : at.weights) {
        addScaled(source.pixel(from++, y), weight, result.pixel(x, y));
      }
    }
  }
  return result;
}

Plane scaledDown(Plane& source, int height) {
  const std::vector<Taps> taps = tapsFor(source.height, height);
  Plane result(source.width, height);
  for (int y = 0; y < height; ++y) {
    const Taps& at = taps[static_cast<std::size_t>(y)];
    int from = at.first;
    for (const float weight : at.weights) {
      for (int x = 0; x < result.width; ++x) {
        addScaled(source.pixel(x, from), weight, result.pixel(x, y));
      }
      ++from;
    }
  }
  return result;
}

template <typename Channel>
Plane premultiplied(const Frame& frame) {
  constexpr float kFull = std::numeric_limits<Channel>::max();
  Plane plane(frame.size.width, frame.size.height);
  const std::uint8_t* from = frame.bytes.data();
  for (std::size_t i = 0; i < plane.channels.size(); i += 4) {
    Channel rgba[4];
    std::memcpy(rgba, from, sizeof rgba);
    from += sizeof rgba;
    const float alpha = rgba[3];
    for (std::size_t c = 0; c < 3; ++c) plane.channels[i + c] = rgba[c] * (alpha / kFull);
    plane.channels[i + 3] = alpha;
  }
  return plane;
}

// The kernel's negative lobes overshoot at edges; such values are brought back.
template <typename Channel>
void placeCentered(Plane& plane, Frame& frame) {
  constexpr float kFull = std::numeric_limits<Channel>::max();
  const int left = (frame.size.width - plane.width) / 2;
  const int top = (frame.size.height - plane.height) / 2;
  for (int y = 0; y < plane.height; ++y) {
    std::uint8_t* to = frame.row(y + top) + frame.pixelBytes() * static_cast<std::size_t>(left);
    for (int x = 0; x < plane.width; ++x, to += 4 * sizeof(Channel)) {
      const float* pixel = plane.pixel(x, y);
      const float alpha = std::clamp(pixel[3], 0.0f, kFull);
      Channel rgba[4] = {};
      rgba[3] = static_cast<Channel>(alpha + 0.5f);
      if (rgba[3] != 0) {
        for (int c = 0; c < 3; ++c) {
          const float straight = std::clamp(pixel[c] / alpha * kFull, 0.0f, kFull);
          rgba[c] = static_cast<Channel>(straight + 0.5f);
        }
      }
      std::memcpy(to, rgba, sizeof rgba);
    }
  }
}

template <typename Channel>
Frame fitted(const Frame& picture, FrameSize size) {
  const double scale = std::min(static_cast<double>(size.width) / picture.size.width,
                                static_cast<double>(size.height) / picture.size.height);
  const auto side = [scale](int length, int limit) {
    return std::clamp(static_cast<int>(std::lround(length * scale)), 1, limit);
  };
  Plane plane = premultiplied<Channel>(picture);
  plane = scaledAcross(plane, side(picture.size.width, size.width));
  plane = scaledDown(plane, side(picture.size.height, size.height));
  Frame frame(size, picture.depth);
  placeCentered<Channel>(plane, frame);
  return frame;
}

}  // namespace

Frame fittedFrame(const Frame& picture, FrameSize size) {
  if (picture.size == size) return picture;
  return picture.depth == Depth::Bits8 ? fitted<std::uint8_t>(picture, size)
                                       : fitted<std::uint16_t>(picture, size);
}

}  // namespace cli
