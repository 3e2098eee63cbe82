#include "desk/render/clip_frames.h"

#include <algorithm>
#include <cstdlib>

#include "cli/support/errors.h"

namespace desk {
namespace {

constexpr std::size_t kMostBytes = std::size_t{384} << 20;
constexpr int kShortWay = 48;  // frames that are sooner read than another decoder is started
constexpr int kWayBack = 12;   // frames before a frame gone back to, which are likely the next

/// As read, and converted.
std::size_t bytesKeptOf(cli::FrameSize size, cli::Depth depth) {
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
         (depth == cli::Depth::Bits8 ? 8 : 16);
}

}  // namespace

ClipFrames::ClipFrames(const cli::ScenePlan& plan)
    : info_(*plan.input),
      size_(plan.size),
      rate_(plan.rate),
      depth_(plan.depth),
      most_(std::max(kMostBytes / bytesKeptOf(size_, depth_), std::size_t{1})),
      last_(info_.isStill() ? 0 : std::max(cli::framesAtRate(info_, rate_) - 1, 0)) {}

const hostkit::World& ClipFrames::at(int frame) {
  frame = std::clamp(frame, 0, last_);
  if (const auto found = kept_.find(frame); found != kept_.end()) return found->second.world();
  const bool isNear = reader_ && frame >= next_ && frame - next_ <= kShortWay;
  if (!isNear) {
    const bool goesBack = !kept_.empty() && frame < next_;
    const int wayBack = most_ > kWayBack ? kWayBack : static_cast<int>(most_) - 1;
    next_ = std::max(goesBack ? frame - wayBack : frame, 0);
    reader_.emplace(info_, size_, rate_, depth_, next_);
    next_ = reader_->firstFrame();
  }
  if (const hostkit::World* world = read(frame)) return *world;
  // It ends before its time, and the last picture that there is holds.
  if (kept_.empty() || kept_.begin()->first > frame) {
    reader_.emplace(info_, size_, rate_, depth_);
    next_ = 0;
    read(frame);
  }
  const auto after = kept_.upper_bound(frame);
  if (after == kept_.begin()) {
    throw scene::WorkError("the input " + cli::inQuotes(info_.source.name) + " shows no picture");
  }
  return std::prev(after)->second.world();
}

/// Null when the clip ends before that frame.
const hostkit::World* ClipFrames::read(int frame) {
  while (next_ <= frame) {
    cli::InputPicture picture(hostkit::World(size_.width, size_.height, depth_));
    if (!reader_->read(picture)) {
      last_ = std::max(next_ - 1, 0);
      reader_.reset();
      return nullptr;
    }
    kept_.insert_or_assign(next_, std::move(picture));
    ++next_;
    makeRoom(frame);
  }
  return &kept_.at(frame).world();
}

void ClipFrames::makeRoom(int frame) {
  while (kept_.size() > most_) {
    const bool firstIsFarther =
        std::abs(kept_.begin()->first - frame) >= std::abs(std::prev(kept_.end())->first - frame);
    kept_.erase(firstIsFarther ? kept_.begin() : std::prev(kept_.end()));
  }
}

}  // namespace desk
