#include "openfx/value_record.h"

#include "effect/star_history.h"

namespace brisel::openfx {
namespace {

/// FNV-1a over whole numbers; never 0.
std::uint64_t markOf(const Choices& choices) {
  constexpr std::uint64_t kPrime = 0x100000001b3;
  std::uint64_t mark = 0xcbf29ce484222325;
  for (const Choice& choice : choices) {
    const auto place = static_cast<std::uint64_t>(choice.index) * 2 + (choice.isY ? 1 : 0);
    mark = (mark ^ place) * kPrime;
    mark = (mark ^ static_cast<std::uint32_t>(choice.number)) * kPrime;
    mark ^= mark >> 29;
  }
  return mark | 1;
}

std::size_t indexOf(std::int32_t frame) {
  return static_cast<std::size_t>(frame % StarHistory::kLongestWay);
}

}  // namespace

void ValueRecord::note(std::int32_t frame, const Choices& choices) {
  const std::size_t index = indexOf(frame);
  std::vector<std::uint64_t>& marks = marks_[StarHistory::beginOf(frame)];
  if (index >= marks.size()) marks.resize(index + 1);
  marks[index] = markOf(choices);
}

std::uint64_t ValueRecord::markAt(std::int32_t frame) const {
  const auto found = marks_.find(StarHistory::beginOf(frame));
  const std::size_t index = indexOf(frame);
  return found != marks_.end() && index < found->second.size() ? found->second[index] : 0;
}

bool ValueRecord::agrees(std::int32_t frame, const Choices& choices) const {
  return markAt(frame) == markOf(choices);
}

}  // namespace brisel::openfx
