// Which frame a host means by a time. Hosts tell no frame rate, and count time in seconds or in
// milliseconds.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace brisel {

enum class TimeUnit : std::uint8_t { Unknown, Seconds, Milliseconds };

/// By the name of the library that calls the filter; unknown for a host that is linked as one file.
TimeUnit timeUnitOfHost(std::string_view library);

/// Learns from the times that it is told, of the unit, too, where that is unknown. Frame 0 is at
/// time 0.
class FrameClock {
 public:
  static constexpr std::int32_t kLastFrame = 1'000'000'000;

  FrameClock() : FrameClock(TimeUnit::Unknown) {}
  explicit FrameClock(TimeUnit unit)
      : isMilliseconds_(unit == TimeUnit::Milliseconds),
        isUnitCertain_(unit != TimeUnit::Unknown) {}

  /// Frames a second, above 0, that somebody told; nothing when nobody does.
  void setRate(std::optional<double> rate) { toldRate_ = rate; }

  /// A host asks for the frame at a time of its own. Without a rate that was told, the first step
  /// between two times is a frame; but where times lie between such frames, and in seconds where it
  /// may be several frames of a usual rate, from 23.976 to 120. Not-a-number, or a time long before
  /// the clip, is that of hosts that know none: the frame after the last one.
  void tell(double time);

  /// The frame at the time told last, 0 to kLastFrame.
  std::int32_t frame() const;

  /// Frames a second, as far as is known.
  double rate() const;

 private:
  double seconds(double time) const { return isMilliseconds_ ? time / 1000 : time; }
  bool mayBeFrame(double seconds, bool isRounded) const;
  void learnUnit(double time);
  void learnStep(double time);
  void divideStep(double now, bool isRounded);

  std::optional<double> toldRate_;
  std::optional<double> time_;      // told last; nothing when there was none
  std::int32_t countedFrame_ = -1;  // where there was none
  bool isMilliseconds_;
  bool isUnitCertain_;
  int wholeTimes_ = 0;                 // that leave the unit open
  int learnedTimes_ = 0;               // from which a step was learned, or might have been
  double step_ = 0;                    // between frames, seconds; 0 when unknown
  std::uint32_t possibleRates_ = ~0u;  // by their place among the usual ones
};

}  // namespace brisel
