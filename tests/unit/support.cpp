#include "support.h"

#include <cmath>
#include <cstring>
#include <optional>

namespace unit {

// The standard distributions differ between libraries; these do not.
std::int32_t Dice::integer(std::int32_t least, std::int32_t most) {
  const auto choices = static_cast<std::uint32_t>(most - least) + 1;
  return least + static_cast<std::int32_t>(engine_() % choices);
}

float Dice::real(float least, float most) {
  return least + (most - least) * static_cast<float>(engine_() >> 8) / 16777216.0f;
}

float Dice::logarithmic(float least, float most) {
  std::int32_t doublings = 0;
  for (float v = least; 2.0f * v <= most; v *= 2.0f) ++doublings;
  return std::min(most, std::ldexp(least * real(1.0f, 2.0f), integer(0, doublings)));
}

brisel::Rgb Dice::color() {
  const auto channel = [&] { return integer(0, 3) == 0 ? oneOf({0, 255}) : integer(0, 255); };
  return {channel(), channel(), channel()};
}

float Dice::value() {
  if (integer(0, 3) > 0) return real(0.0f, 1.5f);
  return oneOf({0.0f, -0.5f, 1.0f, 1e-6f, 0.004f, 50.0f, std::nanf(""), HUGE_VALF});
}

float Dice::position(std::int32_t extent) {
  const float far = static_cast<float>(2 * extent);
  if (coin()) return real(-far, static_cast<float>(extent) + far);
  const float edge = static_cast<float>(oneOf({-1, 0, 1, extent / 2, extent - 1, extent}));
  return edge + oneOf({-1.0f, 1.0f}) * oneOf({0.0f, 1e-7f, 0.001f, 0.25f, 0.5f, 0.75f, 0.9999999f});
}

Frame::Frame(std::int32_t width, std::int32_t height, bool deep)
    : width_(width),
      height_(height),
      deep_(deep),
      rowBytes_(static_cast<std::size_t>(width * 4 + 6) * (deep ? 2 : 1)),
      bytes_(rowBytes_ * static_cast<std::size_t>(height + 2)) {}

void Frame::fill(Dice& dice) {
  for (std::uint8_t& byte : bytes_) byte = static_cast<std::uint8_t>(dice.bits());
  const std::uint16_t full = deep_ ? 32768 : 255;
  for (std::int32_t y = 0; y < height_; ++y) {
    for (std::int32_t x = 0; x < width_; ++x) {
      const bool flat = dice.coin();  // one level in all channels
      const auto level =
          dice.oneOf<std::uint16_t>({0, 0, full, static_cast<std::uint16_t>(full / 3)});
      for (int c = 0; c < 4; ++c) {
        const auto i = static_cast<std::size_t>(x) * 4 + static_cast<std::size_t>(c);
        const auto v = flat ? level : static_cast<std::uint16_t>(dice.integer(0, full));
        std::uint8_t* row = pixels() + static_cast<std::size_t>(y) * rowBytes_;
        if (deep_) {
          std::memcpy(row + 2 * i, &v, 2);
        } else {
          row[i] = static_cast<std::uint8_t>(v);
        }
      }
    }
  }
}

void Frame::becomeOutputOf(brisel::RenderSettings& s) {
  s.frameWidth = width_;
  s.frameHeight = height_;
  s.deepColor = deep_;
  s.outputPixels = pixels();
  s.outputPixels16 = reinterpret_cast<std::uint16_t*>(pixels());
  s.outputRowStride = static_cast<std::int32_t>(rowBytes_) / (deep_ ? 2 : 1);
}

void Frame::becomeInputOf(brisel::RenderSettings& s) {
  s.inputWidth = width_;
  s.inputHeight = height_;
  s.inputPixels = pixels();
  s.inputPixels16 = reinterpret_cast<std::uint16_t*>(pixels());
  s.inputRowStride = static_cast<std::int32_t>(rowBytes_) / (deep_ ? 2 : 1);
}

std::uint16_t Frame::channel(std::int32_t x, std::int32_t y, int c) const {
  const auto i = static_cast<std::size_t>(x) * 4 + static_cast<std::size_t>(c);
  const std::uint8_t* row = bytes_.data() + rowBytes_ * static_cast<std::size_t>(y + 1);
  if (!deep_) return row[i];
  std::uint16_t v;
  std::memcpy(&v, row + 2 * i, 2);
  return v;
}

void expectSame(const Frame& drawn, const Frame& expected) {
  const auto [a, b] = std::ranges::mismatch(drawn.bytes_, expected.bytes_);
  if (a == drawn.bytes_.end()) return;
  const auto offset = static_cast<std::size_t>(a - drawn.bytes_.begin());
  const std::size_t row = offset / drawn.rowBytes_;
  const std::size_t column = offset % drawn.rowBytes_ / (drawn.deep_ ? 8 : 4);
  ADD_FAILURE() << "bytes differ, first in row " << static_cast<int>(row) - 1 << " (of "
                << drawn.height_ << "), column " << column << " (of " << drawn.width_
                << "): " << +*a << ", expected " << +*b;
}

void drawWithAll(const Scene& scene, const Frame& frame,
                 const std::function<void(brisel::Drawing&)>& draw, Digest& digest) {
  std::optional<Frame> first;
  brisel::DrawingState stateOfFirst;
  for (const brisel::Kernels* kernels : brisel::availableKernels()) {
    SCOPED_TRACE(kernels->name);
    Frame drawn = frame;
    brisel::RenderSettings settings = scene.settings;
    drawn.becomeOutputOf(settings);
    brisel::RandomGenerator random;
    brisel::DrawingState state = scene.state;
    brisel::Drawing drawing{settings,   random, state, brisel::outputLayer(settings),
                            scene.rule, kernels};
    draw(drawing);
    EXPECT_EQ(random.state(), 0u) << "sprites draw no chance";
    if (!first) {
      first = drawn;
      stateOfFirst = state;
      for (const std::uint8_t byte : drawn.bytes()) digest.add(byte);
    }
    expectSame(drawn, *first);
    EXPECT_EQ(state.rainbowShift, stateOfFirst.rainbowShift);
    EXPECT_EQ(state.rainbowOn, stateOfFirst.rainbowOn);
    EXPECT_EQ(state.currentRandomFactor, stateOfFirst.currentRandomFactor);
    EXPECT_EQ(state.glowScale, stateOfFirst.glowScale);
    EXPECT_EQ(state.crossVariant, stateOfFirst.crossVariant);
    EXPECT_EQ(state.textureScale, stateOfFirst.textureScale);
    EXPECT_EQ(state.textureMix, stateOfFirst.textureMix);
  }
}

}  // namespace unit
