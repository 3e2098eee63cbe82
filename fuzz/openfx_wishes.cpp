#include "openfx_wishes.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string>

namespace fuzz {
namespace {

using hostkit::OpenFxPicture;

constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();

std::string anyText(Bytes& bytes, const std::string& parameter) {
  if (bytes.integerIn(0, 3) == 0) {
    const auto text = bytes.take(static_cast<std::size_t>(bytes.integerIn(0, 40)));
    return {text.begin(), text.end()};
  }
  if (parameter == "path") {
    return bytes.oneOf({"", "M 2 2 L 20 4 L 12 16 Z", "M0,0c9 9-9 9 20 12z M 3 3 h 9 v 9 h -9 z",
                        "M -1e9 0 L 1e9 1e9", "M 1 1 Q", "m 1e-30 0 a 5 3 20 1 0 9 9"});
  }
  return bytes.oneOf({"", EXAMPLE_SCENES "embers.toml", EXAMPLE_SCENES "fireworks.toml",
                      EXAMPLE_SCENES "star_logo.toml", EXAMPLE_SCENES "nothing", EXAMPLE_SCENES});
}

hostkit::PictureKind anyKind(Bytes& bytes, const std::string& depth) {
  hostkit::PictureKind kind;
  kind.depth = depth;
  kind.components = bytes.oneOf({kOfxImageComponentRGBA, kOfxImageComponentRGBA,
                                 kOfxImageComponentRGB, "OfxImageComponentAlpha"});
  kind.alpha = bytes.oneOf({kOfxImageUnPreMultiplied, kOfxImagePreMultiplied, kOfxImageOpaque, ""});
  return kind;
}

OfxRectI anyBounds(Bytes& bytes) {
  const int origin = bytes.oneOf({0, 0, -7, 1000, kLeast, kMost - 40});
  const int x = origin + bytes.integerIn(0, 8), y = origin + bytes.integerIn(0, 8);
  return {x, y, x + bytes.integerIn(0, 24), y + bytes.integerIn(1, 18)};
}

/// Around, across or away from those bounds.
OfxRectI anyRectangle(Bytes& bytes, const OfxRectI& bounds) {
  const auto moved = [&](int side) {
    if (bytes.integerIn(0, 15) == 0) return bytes.oneOf({kLeast, kMost, 0});
    const std::int64_t place = std::int64_t{side} + bytes.integerIn(-12, 12);
    return static_cast<int>(std::clamp<std::int64_t>(place, kLeast, kMost));
  };
  return {moved(bounds.x1), moved(bounds.y1), moved(bounds.x2), moved(bounds.y2)};
}

/// Floats may be any that there are.
OpenFxPicture anyPicture(Bytes& bytes, const std::string& depth) {
  const hostkit::PictureKind kind = anyKind(bytes, depth);
  const OfxRectI bounds = anyBounds(bytes);
  OpenFxPicture picture(kind, bounds, bytes.flag());
  const bool isWild = depth == kOfxBitDepthFloat && bytes.flag();
  auto pattern = bytes.integer<std::uint32_t>();
  for (int y = bounds.y1; y < bounds.y2; ++y) {
    for (int x = bounds.x1; x < bounds.x2; ++x) {
      for (std::size_t c = 0; c < picture.channels(); ++c) {
        pattern = pattern * 1664525u + 1013904223u;
        const bool isAny = isWild && (pattern >> 13) % 4 == 0;
        picture.setChannel(x, y, c,
                           isAny ? std::bit_cast<float>(pattern) : (pattern >> 24) / 255.0);
      }
    }
  }
  return picture;
}

}  // namespace

double anyNumber(Bytes& bytes) {
  switch (bytes.integerIn(0, 3)) {
    case 0:
      return std::bit_cast<double>(bytes.integer<std::uint64_t>());
    case 1:
      return double{bytes.real()};
    default:
      return bytes.integerIn(-5, 250) / 10.0;
  }
}

void bound(OfxParamStruct& param) {
  const std::string& name = param.properties.name;
  const auto atMost = [&](double most) {
    for (double& number : param.numbers) number = number < most ? number : most;
  };
  if (name == "maximumNumberOfStars") atMost(24);
  if (name == "raysCount" || name == "raysCountDispersion") atMost(25);
}

void setAnything(OfxParamStruct& param, Bytes& bytes) {
  if (param.type == kOfxParamTypeString) {
    param.text = anyText(bytes, param.properties.name);
  } else if (param.properties.name == "startFrame") {
    // To whose frames at anyTime no long way leads: the stars begin anew every million frames.
    param.numbers = {
        static_cast<double>(bytes.oneOf({0, 3, -2, -1000008, 1000000, kLeast, kMost}))};
  } else {
    const bool isWhole = param.type == kOfxParamTypeInteger || param.type == kOfxParamTypeBoolean ||
                         param.type == kOfxParamTypeChoice;
    for (double& number : param.numbers) {
      number = !isWhole                     ? anyNumber(bytes)
               : bytes.integerIn(0, 7) == 0 ? bytes.integer<std::int32_t>()
                                            : bytes.integerIn(-1, 30);
    }
  }
  bound(param);
}

double anyTime(Bytes& bytes) {
  using Limits = std::numeric_limits<double>;
  if (bytes.integerIn(0, 7) == 0) {
    return bytes.oneOf({-1.0, -1e300, 1e300, Limits::infinity(), -Limits::infinity(),
                        Limits::quiet_NaN(), Limits::denorm_min(), -0.0});
  }
  const double begin = bytes.oneOf({0.0, 0.0, 0.5, 1000004.0, 700000004.0});
  return begin + bytes.integerIn(0, 24);
}

WantedFrame anyFrame(Bytes& bytes) {
  const char* const depth =
      bytes.oneOf({kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthFloat, "OfxBitDepthHalf"});
  hostkit::PictureKind kind = anyKind(bytes, depth);
  const OfxRectI bounds = anyBounds(bytes);
  const bool rowsGoDown = bytes.flag();
  if (bytes.integerIn(0, 7) == 0) {  // too short
    kind.toldRowBytes = bytes.integerIn(1, std::max(3 * (bounds.x2 - bounds.x1) - 1, 1));
    if (bytes.flag()) kind.toldRowBytes = -kind.toldRowBytes;
  }
  WantedFrame frame{{.time = anyTime(bytes)}, {}, OpenFxPicture(kind, bounds, rowsGoDown)};
  if (bytes.integerIn(0, 7) != 0) {
    frame.source = anyPicture(bytes, bytes.integerIn(0, 7) == 0 ? kOfxBitDepthByte : depth);
  }
  if (bytes.flag()) frame.request.window = anyRectangle(bytes, bounds);
  if (bytes.flag()) frame.request.frame = anyRectangle(bytes, bounds);
  if (bytes.flag()) {
    frame.request.scale = bytes.flag() ? anyNumber(bytes) : bytes.oneOf({0.5, 0.25, 1e-9, 0.0});
  }
  frame.request.field = bytes.oneOf({"OfxFieldNone", "OfxFieldNone", "OfxFieldBoth",
                                     kOfxImageFieldLower, kOfxImageFieldUpper, ""});
  return frame;
}

}  // namespace fuzz
