#include "frei0r/star_history.h"

#include <iterator>

#include "engine/particle.h"

namespace brisel {
namespace {

constexpr std::size_t kMostBytes = 16 << 20;

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

void StarHistory::clear() {
  *this = StarHistory();
}

void StarHistory::restoreNearest(std::int32_t frame) {
  const auto after = kept_.upper_bound(frame);
  if (after != kept_.begin()) {
    const auto& [nearest, instance] = *std::prev(after);
    if (next_ > frame || nearest > next_) {
      instance_ = instance;
      next_ = nearest;
    }
  } else if (next_ > frame) {
    instance_ = Instance();
    next_ = 0;
  }
}

void StarHistory::keep() {
  if (next_ % spacing_ != 0 || next_ == 0 || kept_.contains(next_)) return;
  kept_.emplace(next_, instance_);
  keptBytes_ += bytesOf(instance_);
  while (keptBytes_ > kMostBytes) {
    spacing_ *= 2;
    std::erase_if(kept_, [this](const auto& state) { return state.first % spacing_ != 0; });
    keptBytes_ = 0;
    for (const auto& [frame, instance] : kept_) keptBytes_ += bytesOf(instance);
  }
}

}  // namespace brisel
