// What a host's values were when frames were stepped over.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "look/choices.h"

namespace brisel::openfx {

/// Some hosts change values without a word. So each frame's values leave a mark here, and asking
/// for them again tells whether they are still the same. Takes 8 bytes a frame.
class ValueRecord {
 public:
  void note(std::int32_t frame, const Choices& choices);

  bool knows(std::int32_t frame) const { return markAt(frame) != 0; }
  /// Of a frame that is known.
  bool agrees(std::int32_t frame, const Choices& choices) const;

  void clear() { marks_.clear(); }

 private:
  std::uint64_t markAt(std::int32_t frame) const;  // 0: not known

  /// By the frame at which stars begin anew, and by how many frames later it was.
  std::map<std::int32_t, std::vector<std::uint64_t>> marks_;
};

}  // namespace brisel::openfx
