#include "frei0r/choice_record.h"

#include <utility>

namespace brisel {

bool ChoiceRecord::record(std::int32_t frame, Choices choices) {
  constexpr std::int32_t kMostFrames = 1'000'000;
  constexpr std::size_t kMostNumbers = (8 << 20) / sizeof(Choice);
  const auto index = static_cast<std::size_t>(frame);
  now_ = std::move(choices);
  if (frame >= kMostFrames) return true;
  const bool isKnown = index < byFrame_.size() && byFrame_[index] != 0;
  const bool isSame = isKnown && distinct_[byFrame_[index] - 1] == now_;
  if (isSame) return true;
  if (isKnown) {
    distinct_.clear();
    byFrame_.clear();
    numbers_ = 0;
  }
  if (distinct_.empty() || distinct_.back() != now_) {
    if (numbers_ + now_.size() > kMostNumbers) return !isKnown;
    distinct_.push_back(now_);
    numbers_ += now_.size() + 2;  // which is about what the vector itself takes
  }
  if (index >= byFrame_.size()) byFrame_.resize(index + 1);
  byFrame_[index] = static_cast<std::uint32_t>(distinct_.size());
  return !isKnown;
}

const Choices& ChoiceRecord::at(std::int32_t frame) const {
  const auto index = static_cast<std::size_t>(frame);
  const bool isKnown = index < byFrame_.size() && byFrame_[index] != 0;
  return isKnown ? distinct_[byFrame_[index] - 1] : now_;
}

}  // namespace brisel
