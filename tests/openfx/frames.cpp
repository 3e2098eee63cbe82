#include "tests/openfx/frames.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "effect/instance.h"

namespace tests {

using brisel::Values;
using hostkit::OpenFxPicture;

OfxPlugin& thePlugin() {
  static hostkit::OpenFxBinary binary(PLUGIN_PATH);
  return *binary.plugin(0);
}

StrictHost::~StrictHost() {
  for (const std::string& fault : complaints()) ADD_FAILURE() << fault;
}

OpenFxPicture pattern(const hostkit::PictureKind& kind, const OfxRectI& bounds, bool rowsGoDown,
                      bool hasAlpha) {
  OpenFxPicture picture(kind, bounds, rowsGoDown);
  // Which floats and the effect's 16 bits hold exactly.
  const double full = kind.depth == kOfxBitDepthFloat ? 256 : 255;
  const auto level = [full](unsigned n) { return (n * 2654435761u >> 20) % 256 / full; };
  for (int y = bounds.y1; y < bounds.y2; ++y) {
    for (int x = bounds.x1; x < bounds.x2; ++x) {
      const unsigned place = static_cast<unsigned>((y - bounds.y1) * 4096 + x - bounds.x1) * 4;
      const double alpha = hasAlpha ? level(place + 3) : 1;
      const double factor = kind.alpha == kOfxImagePreMultiplied ? alpha : 1;
      for (std::size_t c = 0; c < 3; ++c) {
        picture.setChannel(x, y, c, level(place + static_cast<unsigned>(c)) * factor);
      }
      if (picture.channels() == 4) picture.setChannel(x, y, 3, alpha);
    }
  }
  return picture;
}

void makeBusy(hostkit::OpenFxEffect& effect) {
  effect.set("intensity", {20});
  effect.set("timeLife", {14});
  effect.set("size", {12.5});
  effect.set("typeOfHalo", {4});
  effect.set("standardPath", {4});
  effect.set("angle", {75});
  effect.set("start", {0.25, 0.75});
  effect.set("colorOfParticles", {1, 0.8, 0.4});
}

Values busyValues() {
  Values values({kFrame.x2, kFrame.y2});
  values.setNumber(brisel::kIntensity, 20);
  values.setNumber(brisel::kTimeLife, 14);
  values.setNumber(brisel::kSize, 12.5);
  values.setNumber(brisel::kTypeOfHalo, 5);
  values.setNumber(brisel::kStandardPath, 5);
  values.setNumber(brisel::kAngle, 75);
  values.setPoint(brisel::kStart, 0.25 * kFrame.x2, 0.25 * kFrame.y2);
  values.setColor(brisel::kColorOfParticles, {0, 255, 204, 102});
  values.setNumber(brisel::kMixWithOriginal, 3);
  return values;
}

OfxStatus renderFrame(hostkit::OpenFxEffect& effect, double time, const OpenFxPicture& source,
                      OpenFxPicture& output) {
  return effect.render({.time = time, .source = &source}, output);
}

EffectFrame effectFrame(const std::function<Values(int frame)>& valuesAt, int frame,
                        const OpenFxPicture* source, bool isDeep) {
  const brisel::FrameSize size{kFrame.x2, kFrame.y2};
  const auto channels = static_cast<std::size_t>(size.width) * size.height * 4;
  const double full = isDeep ? 32768 : 255;
  std::vector<std::uint16_t> deep(channels), deepInput(channels);
  std::vector<std::uint8_t> bytes(channels), byteInput(channels);
  for (std::size_t i = 0; source != nullptr && i < channels; ++i) {
    const int x = static_cast<int>(i / 4) % size.width;
    const int y = size.height - 1 - static_cast<int>(i / 4) / size.width;
    const bool isAlpha = i % 4 == 0;
    const double value =
        isAlpha && source->channels() == 3 ? 1 : source->channel(x, y, isAlpha ? 3 : i % 4 - 1);
    deepInput[i] = static_cast<std::uint16_t>(std::lround(value * 32768));
    byteInput[i] = static_cast<std::uint8_t>(std::lround(value * 255));
  }
  brisel::FrameViews views;
  const auto format = isDeep ? brisel::PixelFormat::Argb16 : brisel::PixelFormat::Argb8;
  const std::ptrdiff_t rowBytes = std::ptrdiff_t{isDeep ? 8 : 4} * size.width;
  auto* output = isDeep ? reinterpret_cast<std::uint8_t*>(deep.data()) : bytes.data();
  auto* input = isDeep ? reinterpret_cast<std::uint8_t*>(deepInput.data()) : byteInput.data();
  views.output = {output, size.width, size.height, rowBytes, format};
  if (source != nullptr) views.input = {input, size.width, size.height, rowBytes, format};
  brisel::Instance instance;
  for (int i = 0; i < frame; ++i) instance.step(valuesAt(i), i, views);
  instance.render(valuesAt(frame), frame, views);
  EffectFrame result(channels);
  for (std::size_t i = 0; i < channels; ++i) result[i] = (isDeep ? deep[i] : bytes[i]) / full;
  return result;
}

double channelOf(const EffectFrame& frame, int x, int y, std::size_t channel) {
  const int pixel = (kFrame.y2 - 1 - y) * kFrame.x2 + x;
  return frame[static_cast<std::size_t>(pixel) * 4 + (channel + 1) % 4];
}

void expectFrame(const OpenFxPicture& picture, const EffectFrame& expected, double tolerance,
                 double above) {
  double greatest = 0;
  const OfxRectI& b = picture.bounds();
  for (int y = b.y1; y < b.y2; ++y) {
    for (int x = b.x1; x < b.x2; ++x) {
      for (std::size_t c = 0; c < picture.channels(); ++c) {
        const double shown = std::min(picture.channel(x, y, c), 1.0);  // floats may be above
        const double difference = shown - channelOf(expected, x, y, c) - above;
        greatest = std::max(greatest, std::abs(difference));
      }
    }
  }
  EXPECT_LE(greatest, tolerance) << picture.kind().depth;
}

std::vector<std::uint8_t> freshFrame(int frame) {
  StrictHost host;
  hostkit::OpenFxEffect effect(host, thePlugin(), kOfxContextFilter);
  makeBusy(effect);
  const OpenFxPicture source = pattern({});
  OpenFxPicture output({}, kFrame);
  EXPECT_EQ(effect.render({.time = static_cast<double>(frame), .source = &source}, output),
            kOfxStatOK);
  return output.bytes();
}

}  // namespace tests
