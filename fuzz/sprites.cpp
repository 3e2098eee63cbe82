// Any list of sprites, on frames of any size, stride and depth: every instruction set that the
// processor has, with one thread and with several, paints what the plain kernels paint.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <variant>
#include <vector>

#include "bytes.h"
#include "render/painter.h"
#include "target.h"

namespace {

using namespace brisel;
using fuzz::Bytes;

/// Pixels with other bytes before, between and behind the rows. The last row's end is that of the
/// memory.
class Image {
 public:
  Image(Bytes& bytes, PixelFormat format, std::int32_t width, std::int32_t height) {
    view_ = {nullptr, width, height, 0, format};
    const auto rowBytes = view_.pixelBytes() * width;
    view_.rowBytes = rowBytes + bytes.integerIn(0, 33);
    const std::ptrdiff_t before = bytes.integerIn(0, 33);
    const std::ptrdiff_t rows = height > 0 ? view_.rowBytes * (height - 1) + rowBytes : 0;
    bytes_.resize(static_cast<std::size_t>(before + rows));
    view_.bytes = bytes_.data() + before;
    if (const auto seed = bytes.integer<std::uint16_t>(); seed != 0) fill(seed);
  }
  Image(const Image& other) : bytes_(other.bytes_), view_(other.view_) {
    view_.bytes = bytes_.data() + (other.view_.bytes - other.bytes_.data());
  }

  const MutableImageView& view() const { return view_; }

  bool operator==(const Image& other) const { return bytes_ == other.bytes_; }

  /// Whether the bytes outside the rows of pixels are the same.
  bool hasMarginsOf(const Image& other) const {
    Image withPixelsOf(*this);
    for (std::int32_t y = 0; y < view_.height; ++y) {
      std::memcpy(withPixelsOf.view_.at(0, y), other.view_.at(0, y),
                  static_cast<std::size_t>(view_.pixelBytes() * view_.width));
    }
    return withPixelsOf == other;
  }

 private:
  /// With channels of all values up to full scale, some of them full.
  void fill(std::uint32_t seed) {
    const auto next = [&seed] { return (seed = seed * 1664525u + 1013904223u) >> 12; };
    for (std::uint8_t& byte : bytes_) byte = static_cast<std::uint8_t>(next());
    for (std::int32_t y = 0; view_.isDeep() && y < view_.height; ++y) {
      for (std::int32_t channel = 0; channel < 4 * view_.width; ++channel) {
        const std::uint32_t value = next();
        const auto deep = static_cast<std::uint16_t>(value % 16 == 0 ? 32768 : value % 32768);
        std::memcpy(view_.at(0, y) + 2 * channel, &deep, sizeof deep);
      }
    }
  }

  std::vector<std::uint8_t> bytes_;
  MutableImageView view_;
};

float aboveZero(float value) {
  value = std::fabs(value);
  return value > 0.0f ? value : 1.0f;
}

/// Near the frame, most of the time.
float coordinate(Bytes& bytes) {
  return bytes.integerIn(0, 7) == 0 ? bytes.real()
                                    : static_cast<float>(bytes.integer<std::int16_t>()) / 256.0f;
}

float extent(Bytes& bytes) {
  return bytes.integerIn(0, 7) == 0
             ? aboveZero(bytes.real())
             : static_cast<float>(bytes.integer<std::uint16_t>() + 1) / 512.0f;
}

std::int32_t radius(Bytes& bytes) {
  if (bytes.integerIn(0, 7) != 0) return bytes.integerIn(1, 90);
  return std::max(bytes.integer<std::int32_t>() & 0x7fffffff, 1);
}

/// Finite, as parameters can say it; half of the time from 0 to 2, as most brightnesses and shares
/// are.
float amount(Bytes& bytes) {
  constexpr float kMost = 1000.0f;
  if (!bytes.flag()) return static_cast<float>(bytes.integer<std::uint8_t>()) / 128.0f;
  const float number = bytes.real();
  return std::fabs(number) <= kMost ? number : kMost;
}

/// From 0 to 1.
float share(Bytes& bytes) {
  return std::min(std::fabs(amount(bytes)) / 2.0f, 1.0f);
}

Rgb color(Bytes& bytes) {
  const auto channel = [&] { return std::int32_t{bytes.integer<std::uint8_t>()}; };
  const std::int32_t red = channel();
  const std::int32_t green = channel();
  return {red, green, channel()};
}

BlendRule rule(Bytes& bytes) {
  return static_cast<BlendRule>(bytes.integerIn(0, 4));
}

using Sprite = std::variant<DotSpec, GlowSpec, BlicsSpec, CrossSpec, RaySpec>;

// Members are read in the order in which they stand, as initializers in braces are evaluated.
Sprite readSprite(Bytes& bytes) {
  const auto center = [&] { return PointF{coordinate(bytes), coordinate(bytes)}; };
  switch (bytes.integerIn(0, 4)) {
    case 0:
      if (bytes.flag())
        return DotSpec{bytes.integer<std::int32_t>(), bytes.integer<std::int32_t>()};
      return DotSpec{bytes.integer<std::int8_t>(), bytes.integer<std::int8_t>()};
    case 1:
      return GlowSpec{bytes.oneOf({GlowProfile::Simple, GlowProfile::Full}),
                      rule(bytes),
                      radius(bytes),
                      center(),
                      color(bytes),
                      amount(bytes),
                      amount(bytes),
                      amount(bytes),
                      amount(bytes)};
    case 2:
      return BlicsSpec{bytes.oneOf({BlicsProfile::Disc, BlicsProfile::Ring}),
                       rule(bytes),
                       radius(bytes),
                       center(),
                       color(bytes),
                       aboveZero(amount(bytes)),
                       amount(bytes),
                       aboveZero(amount(bytes))};
    case 3: {
      const bool isTextured = bytes.flag();
      const auto turn = static_cast<float>(bytes.integer<std::int16_t>()) / 1000.0f;
      const float size = extent(bytes);
      const PointF place = center();
      const bool isNear = std::fabs(place.x) < 0x1p31f && std::fabs(place.y) < 0x1p31f;
      return CrossSpec{isTextured,     rule(bytes),    size,         isNear ? place : PointF{},
                       std::cos(turn), std::sin(turn), color(bytes), aboveZero(amount(bytes)),
                       amount(bytes),  amount(bytes),  share(bytes)};
    }
    default: {
      const int flags = bytes.integerIn(0, 7);
      return RaySpec{bytes.oneOf({StarType::Type1, StarType::Type2, StarType::Type3,
                                  StarType::Type4, StarType::Type5}),
                     rule(bytes),
                     (flags & 1) != 0,
                     (flags & 2) != 0,
                     (flags & 4) != 0,
                     center(),
                     extent(bytes),
                     coordinate(bytes),
                     coordinate(bytes),
                     std::fmod(extent(bytes), 700.0f) + 0.01f,
                     color(bytes),
                     amount(bytes),
                     amount(bytes)};
    }
  }
}

}  // namespace

void fuzz::runInput(std::span<const std::uint8_t> input) {
  // Kept, as their memory is that of thousands of sprites. Threads take their time to begin, so
  // that few inputs have them.
  static const auto painters = [] {
    std::vector<std::unique_ptr<Painter>> all;
    for (const Kernels* kernels : availableKernels()) {
      all.push_back(std::make_unique<Painter>(PaintOptions{1, kernels}));
    }
    all.push_back(std::make_unique<Painter>(PaintOptions{.threads = 2}));
    return all;
  }();

  Bytes bytes(input);
  const auto format = bytes.flag() ? PixelFormat::Argb16 : PixelFormat::Argb8;
  const int width = bytes.integerIn(1, 80);
  const int height = bytes.integerIn(1, 48);
  const Image output(bytes, format, width, height);
  const Image footage(bytes, format, bytes.integerIn(0, 90), bytes.integerIn(0, 60));
  const auto mix = static_cast<MixMode>(bytes.integerIn(0, 4));
  const int options = bytes.integerIn(0, 255);
  const bool keepsOutput = (options & 1) != 0;
  const std::size_t painterCount = painters.size() - ((options & 30) == 30 ? 0 : 1);
  const int dotsFirst = options >> 5 == 7 ? 4090 : 0;  // a full list, or nearly
  std::vector<Sprite> sprites;
  while (!bytes.empty() && sprites.size() < 32) sprites.push_back(readSprite(bytes));

  std::unique_ptr<Image> plain;
  for (std::size_t i = 0; i < painterCount; ++i) {
    Image painted(output);
    painters[i]->paint({painted.view(), footage.view(), mix, keepsOutput}, [&](SpriteList& list) {
      for (int k = 0; k < dotsFirst; ++k) list.add(DotSpec{k % width, k % height});
      for (const Sprite& sprite : sprites) {
        std::visit([&](const auto& spec) { list.add(spec); }, sprite);
      }
    });
    require(painted.hasMarginsOf(output), "nothing but pixels is written");
    if (plain == nullptr) plain = std::make_unique<Image>(painted);
    require(painted == *plain, "every instruction set paints the same bytes");
  }
}
