// What a host's values were when frames were stepped over.
#pragma once

#include <cstdint>
#include <vector>

#include "look/choices.h"

namespace brisel::openfx {

/// Some hosts change values without a word. So each frame's values leave a mark here, and asking
/// for them again tells whether they are still the same. Takes 8 bytes a frame, and no more than a
/// million frames.
class ValueRecord {
 public:
  void note(std::int32_t frame, const Choices& choices);

  bool knows(std::int32_t frame) const {
    const auto index = static_cast<std::size_t>(frame);
    return index < marks_.size() && marks_[index] != 0;
  }
  /// Of a frame that is known.
  bool agrees(std::int32_t frame, const Choices& choices) const;

  void clear() { marks_.clear(); }

 private:
  std::vector<std::uint64_t> marks_;  // by frame; 0: not known
};

}  // namespace brisel::openfx
