// Keyframes: when a value is due, and how it goes on from there.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scene/frame_rate.h"

namespace scene {

/// How far the handles of a curve may lead, either way; curves beyond look like jumps.
inline constexpr double kMostShare = 1000;

/// From one key to the next: straight, not at all, or along a cubic Bezier curve from (0, 0) to
/// (1, 1), whose handles are those of CSS: time across, from 0 to 1, and value up.
struct Ease {
  bool hold = false;
  double x1 = 0, y1 = 0, x2 = 1, y2 = 1;

  bool isStraight() const { return !hold && x1 == y1 && x2 == y2; }
  /// The share of the way, from 0 to 1 but where handles lead beyond, after a share of the time.
  double share(double time) const;
};

/// "linear", "hold", "in", "out" or "in-out".
std::optional<Ease> easeByName(std::string_view name);
const std::vector<std::string>& easeNames();

/// What all keys have. Times are frames; in a scene just read they may be seconds.
struct Keyframe {
  double time;
  bool inSeconds = false;
  Ease ease{};          // to the next key
  std::string place{};  // where it was written, for messages: "fire.toml:12"
};

template <typename Value>
struct KeyOf : Keyframe {
  KeyOf(Keyframe when, Value what) : Keyframe(std::move(when)), value(std::move(what)) {}

  Value value;
};

/// "1.5s" as 1.5.
std::optional<double> secondsFromText(std::string_view text);

/// "frame 12" or "1.5s", as it is counted.
std::string timeText(const Keyframe& key);

/// Where a frame lies: `share` of the way between two keys, which are one before the first key and
/// after the last.
template <typename Key>
struct KeySpan {
  const Key& from;
  const Key& to;
  double share;
};

/// `keys` are one or more, in the order of their times, which are frames.
template <typename Key>
KeySpan<Key> keysAround(const std::vector<Key>& keys, double frame) {
  const auto after = std::ranges::upper_bound(keys, frame, {}, &Key::time);
  if (after == keys.begin()) return {*after, *after, 0};
  const Key& from = *std::prev(after);
  if (after == keys.end()) return {from, from, 0};
  return {from, *after, from.ease.share((frame - from.time) / (after->time - from.time))};
}

/// Turns seconds into frames. Throws WorkError naming the key's place and the label when the keys
/// are not in order.
void countInFrames(Keyframe& key, const Keyframe* before, FrameRate rate, const std::string& label);

template <typename Key>
void countInFrames(std::vector<Key>& keys, FrameRate rate, const std::string& label) {
  const Keyframe* before = nullptr;
  for (Key& key : keys) {
    countInFrames(key, before, rate, label);
    before = &key;
  }
}

}  // namespace scene
