#include "frei0r/frame_clock.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace brisel {
namespace {

constexpr double kUsualRates[] = {24000.0 / 1001, 24, 25,  30000.0 / 1001,  30, 48, 50,
                                  60000.0 / 1001, 60, 100, 120000.0 / 1001, 120};
constexpr double kLikeliestRate = 25;

// Frames of clips last between these, in seconds; a longer step is a jump.
constexpr double kLeastStep = 1.0 / 250;
constexpr double kMostStep = 0.21;

/// Hosts whose times are rounded to a millisecond show a rate only roughly.
double usualRateNear(double rate, bool isRounded) {
  const auto differenceTo = [rate](double usual) { return std::abs(usual / rate - 1); };
  const double nearest = *std::ranges::min_element(kUsualRates, {}, differenceTo);
  if (differenceTo(nearest) < 2e-4) return nearest;
  if (!isRounded) return rate;
  for (const double candidate : {24.0, 25.0, 30.0, 48.0, 50.0, 60.0, std::round(rate)}) {
    if (differenceTo(candidate) < 0.025) return candidate;
  }
  return rate;
}

bool isInteger(double number) {
  return number == std::floor(number);
}

double toNearestInteger(double number) {
  return std::abs(number - std::round(number));
}

/// Whether a time is that of a frame after the first; whole milliseconds may be rounded ones.
bool isFrame(double seconds, double rate, bool isRounded) {
  const double frames = seconds * rate;
  const double tolerance = 2e-4 + (isRounded ? 0.0005 * rate : 0);
  return frames > 0.9 && toNearestInteger(frames) <= tolerance;
}

}  // namespace

TimeUnit timeUnitOfHost(std::string_view library) {
  if (library.starts_with("libavfilter")) return TimeUnit::Milliseconds;
  if (library.starts_with("libmlt") || library.starts_with("libgst")) return TimeUnit::Seconds;
  return TimeUnit::Unknown;
}

void FrameClock::tell(double time) {
  constexpr double kLeastTime = -1e12;
  if (!(time > kLeastTime)) {
    countedFrame_ = std::min(frame() + 1, kLastFrame);
    time_.reset();
    return;
  }
  time = std::max(time, 0.0);
  if (time == time_) return;
  learnUnit(time);
  learnStep(time);
  time_ = time;
}

std::int32_t FrameClock::frame() const {
  if (!time_) return countedFrame_;
  return static_cast<std::int32_t>(
      std::min<double>(std::round(seconds(*time_) * rate()), kLastFrame));
}

bool FrameClock::mayBeFrame(double seconds, bool isRounded) const {
  if (toldRate_) return isFrame(seconds, *toldRate_, isRounded);
  return std::ranges::any_of(kUsualRates,
                             [&](double rate) { return isFrame(seconds, rate, isRounded); });
}

// Of the times that are frames in milliseconds, one in a thousand is another frame in seconds.
void FrameClock::learnUnit(double time) {
  if (isUnitCertain_ || time == 0) return;
  const bool wasMilliseconds = isMilliseconds_;
  const bool isLikely = mayBeFrame(time / 1000, isInteger(time));
  if (time < 1 || (time_ && std::abs(time - *time_) < 1)) {
    isMilliseconds_ = false;
    isUnitCertain_ = true;
  } else if (!isLikely && !isInteger(time)) {
    isMilliseconds_ = !mayBeFrame(time, false);
    isUnitCertain_ = !isMilliseconds_;
  } else if (isLikely || ++wholeTimes_ >= 4) {  // whole seconds in a row are rare
    isMilliseconds_ = true;
  }
  if (isMilliseconds_ == wasMilliseconds) return;
  step_ = 0;
  possibleRates_ = ~0u;
}

void FrameClock::learnStep(double time) {
  constexpr int kTimesToLearnFrom = 16;  // later ones may drift from a rate that was rounded
  if (learnedTimes_ == kTimesToLearnFrom) return;
  ++learnedTimes_;
  const double now = seconds(time);
  for (std::size_t i = 0; i < std::size(kUsualRates); ++i) {
    if (time > 0 && !isFrame(now, kUsualRates[i], false)) possibleRates_ &= ~(1u << i);
  }
  if (time_) {
    const double step = std::abs(now - seconds(*time_));
    const bool isStep = step >= kLeastStep && step <= kMostStep;
    if (isStep && (step_ == 0 || step < 0.8 * step_)) step_ = step;
  }
  if (step_ > 0) divideStep(now, isMilliseconds_ && isInteger(time));
}

// Where a host leaves frames out, the step is some of them, and times lie between.
void FrameClock::divideStep(double now, bool isRounded) {
  constexpr int kMostFramesLeftOut = 8;
  const double steps = std::round(now / step_);
  const double tolerance = isRounded ? 0.0005 * (steps + 1) : 0.05 * step_;
  if (std::abs(now - steps * step_) <= tolerance) {
    if (steps > 0) step_ = now / steps;  // more exact the later it is
    return;
  }
  for (int parts = 2; parts <= kMostFramesLeftOut && step_ / parts >= kLeastStep; ++parts) {
    if (toNearestInteger(now * parts / step_) > 1e-3) continue;
    step_ /= parts;
    return;
  }
}

double FrameClock::rate() const {
  if (toldRate_) return *toldRate_;
  const double ofStep = step_ > 0 ? usualRateNear(1 / step_, isMilliseconds_) : 0;
  const bool isUsual = std::ranges::find(kUsualRates, ofStep) != std::end(kUsualRates);
  if (isUsual || (isMilliseconds_ && ofStep > 0)) return ofStep;
  // Hosts that count in seconds leave frames out, or share them out among instances.
  for (std::size_t i = 0; i < std::size(kUsualRates); ++i) {
    if ((possibleRates_ >> i & 1) != 0 && time_ > 0.0) return kUsualRates[i];
  }
  return ofStep > 0 ? ofStep : kLikeliestRate;
}

}  // namespace brisel
