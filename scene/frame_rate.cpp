#include "scene/frame_rate.h"

#include <cmath>
#include <numeric>

#include "scene/text/numbers.h"

namespace scene {
namespace {

FrameRate reduced(int frames, int seconds) {
  const int divisor = std::gcd(frames, seconds);
  return {frames / divisor, seconds / divisor};
}

bool isAllowed(double perSecond) {
  return perSecond > 0 && perSecond <= kMaxFramesPerSecond;
}

}  // namespace

std::string FrameRate::text() const {
  std::string text = std::to_string(frames);
  if (seconds != 1) text.append("/").append(std::to_string(seconds));
  return text;
}

std::optional<FrameRate> frameRateFromNumber(double perSecond) {
  if (!isAllowed(perSecond)) return std::nullopt;
  const double whole = std::ceil(perSecond);
  if (whole != perSecond && std::abs(perSecond - whole * 1000 / 1001) < 0.005) {
    return reduced(static_cast<int>(whole) * 1000, 1001);
  }
  const int thousandths = static_cast<int>(std::lround(perSecond * 1000));
  if (thousandths == 0) return std::nullopt;
  return reduced(thousandths, 1000);
}

std::optional<FrameRate> frameRateFromText(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) {
    const auto number = parseNumber(text);
    return number ? frameRateFromNumber(*number) : std::nullopt;
  }
  const auto frames = parseInteger(text.substr(0, slash));
  const auto seconds = parseInteger(text.substr(slash + 1));
  if (!frames || !seconds || *frames <= 0 || *seconds <= 0) return std::nullopt;
  if (!isAllowed(static_cast<double>(*frames) / *seconds)) return std::nullopt;
  return reduced(*frames, *seconds);
}

}  // namespace scene
