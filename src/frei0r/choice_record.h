// What a host had set at the frames that it asked for: it tells keyframes only as it goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frei0r/filter_settings.h"

namespace brisel {

/// Takes 4 bytes a frame and 12 for each number set, where it is not what it was at the frame
/// before; at most 12 MB and a million frames, beyond which it learns no more.
class ChoiceRecord {
 public:
  /// Notes what is set at a frame from 0 on. Returns false when the frame is known with something
  /// else: a person changed it since, and all that was noted before is void and gone.
  bool record(std::int32_t frame, Choices choices);

  /// What was set at a frame; where that is unknown, what was noted last.
  const Choices& at(std::int32_t frame) const;

 private:
  std::vector<Choices> distinct_;       // from each the next one differs
  std::vector<std::uint32_t> byFrame_;  // 1 and more: which of them; 0: unknown
  Choices now_;                         // as noted last
  std::size_t numbers_ = 0;             // in all of them
};

}  // namespace brisel
