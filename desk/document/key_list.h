// Keys of a parameter or a mask, by the frames that they are at.
#pragma once

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "scene/keyframe.h"

namespace desk {

constexpr double kSameFrame = 1e-6;

/// Their end where there is none at that frame.
template <class Keys>
auto keyAt(Keys& keys, double frame) {
  return std::ranges::find_if(
      keys, [&](const auto& key) { return std::abs(key.time - frame) < kSameFrame; });
}

/// Of seconds, which are a frame but for their rounding: 0.28 of them are 7.000000000000001.
template <class Key>
void toWholeFrames(std::vector<Key>& keys) {
  for (Key& key : keys) {
    const double whole = std::round(key.time);
    if (std::abs(key.time - whole) < kSameFrame) key.time = whole;
  }
}

/// The key at that frame, made with that value when there is none, and the ease of the one before.
template <class Key>
void setKey(std::vector<Key>& keys, double frame, const decltype(Key::value)& value) {
  if (const auto there = keyAt(keys, frame); there != keys.end()) {
    there->value = value;
    return;
  }
  const auto after = std::ranges::upper_bound(keys, frame, {}, &Key::time);
  scene::Keyframe made{.time = frame};
  if (after != keys.begin()) made.ease = std::prev(after)->ease;
  keys.insert(after, Key(made, value));
}

}  // namespace desk
