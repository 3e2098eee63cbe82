#include "openfx/value_record.h"

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

}  // namespace

void ValueRecord::note(std::int32_t frame, const Choices& choices) {
  constexpr std::size_t kMostFrames = 1'000'000;
  const auto index = static_cast<std::size_t>(frame);
  if (index >= kMostFrames) return;
  if (index >= marks_.size()) marks_.resize(index + 1);
  marks_[index] = markOf(choices);
}

bool ValueRecord::agrees(std::int32_t frame, const Choices& choices) const {
  return marks_[static_cast<std::size_t>(frame)] == markOf(choices);
}

}  // namespace brisel::openfx
