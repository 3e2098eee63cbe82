// Frames per second as an exact fraction: 25, 30000/1001.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scene {

struct FrameRate {
  int frames = 25;
  int seconds = 1;

  double perSecond() const { return static_cast<double>(frames) / seconds; }
  std::string text() const;  // "25", "30000/1001"
  bool operator==(const FrameRate&) const = default;
};

inline constexpr double kMaxFramesPerSecond = 1000;

/// A decimal rate; rates such as 29.97 and 23.976 become the fraction over 1001 that is meant.
/// Nothing when it is not above 0 and at most kMaxFramesPerSecond.
std::optional<FrameRate> frameRateFromNumber(double perSecond);

/// "25", "29.97" or "30000/1001", with the same limits.
std::optional<FrameRate> frameRateFromText(std::string_view text);

}  // namespace scene
