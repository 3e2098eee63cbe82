#include "effect/star_history.h"

#include <iterator>

#include "engine/particle.h"

namespace brisel {
namespace {

std::size_t bytesOf(const Instance& instance) {
  constexpr std::size_t kPage = 4096;  // stars take whole ones; the rest of a state fits in another
  return static_cast<std::size_t>(instance.starCount()) * sizeof(Particle) + 2 * kPage;
}

}  // namespace

Instance& StarHistory::goTo(std::int32_t frame, const Step& step) {
  restoreNearest(frame);
  for (; next_ < frame; ++next_) {
    keep();
    step(instance_, next_);
  }
  keep();
  return instance_;
}

void StarHistory::forgetAfter(std::int32_t frame) {
  kept_.erase(kept_.upper_bound(frame), kept_.end());
  if (next_ <= frame) return;
  instance_ = Instance();
  next_ = 0;
}

void StarHistory::restoreNearest(std::int32_t frame) {
  const std::int32_t begin = beginOf(frame);
  const bool isOnTheWay = next_ > begin && next_ <= frame;
  const auto after = kept_.upper_bound(frame);
  const auto nearest = after == kept_.begin() ? kept_.end() : std::prev(after);
  if (nearest != kept_.end() && nearest->first > (isOnTheWay ? next_ : begin)) {
    instance_ = nearest->second;
    next_ = nearest->first;
  } else if (!isOnTheWay) {
    instance_ = Instance();
    next_ = begin;
  }
}

void StarHistory::keep() {
  if (next_ % kLeastSpacing != 0 || next_ == beginOf(next_) || kept_.contains(next_)) return;
  kept_.emplace(next_, instance_);
  makeRoom();
}

// States that are kept however far away they are get no more than their share, and of the others
// the farthest go first.
void StarHistory::makeRoom() {
  const std::size_t mostBytesFarAway = mostBytes_ / 4 * 3;
  for (;;) {
    std::size_t bytesFarAway = 0;
    std::size_t bytes = 0;
    auto farthest = kept_.end();
    for (auto state = kept_.begin(); state != kept_.end(); ++state) {
      bytes += bytesOf(state->second);
      if (state->first % spacing_ == 0) {
        bytesFarAway += bytesOf(state->second);
      } else if (farthest == kept_.end() || distance(state->first) > distance(farthest->first)) {
        farthest = state;
      }
    }
    if (bytes <= mostBytes_) return;
    if (bytesFarAway > mostBytesFarAway) {
      spacing_ *= 2;
    } else {
      kept_.erase(farthest);
    }
  }
}

}  // namespace brisel
