#include "cli/pipeline/input_stream.h"

#include <utility>

namespace cli {
namespace {

// One being filled, one waiting; a third is at the renderer.
constexpr int kWorldsAhead = 2;

hostkit::World worldFor(const ScenePlan& plan) {
  return {plan.size.width, plan.size.height, plan.scene.depth};
}

}  // namespace

InputStream::InputStream(const ScenePlan& plan)
    : reader_(plan.scene.input, *plan.input, plan.size, plan.rate, plan.scene.depth),
      current_(worldFor(plan)),
      free_(kWorldsAhead + 1),
      decoded_(kWorldsAhead) {
  for (int i = 0; i < kWorldsAhead; ++i) free_.push(worldFor(plan));
  thread_ = std::jthread([this] { decode(); });
}

InputStream::~InputStream() {
  reader_.stop();
  free_.close();
  decoded_.close();
}

hostkit::World& InputStream::next() {
  if (ended_) return current_;
  if (std::optional<hostkit::World> world = decoded_.pop()) {
    free_.push(std::exchange(current_, std::move(*world)));
  } else {
    ended_ = true;
  }
  return current_;
}

void InputStream::decode() {
  try {
    while (std::optional<hostkit::World> world = free_.pop()) {
      {
        const BusyTime::Scope busy(decoding_);
        const Frame& frame = reader_.next();
        if (reader_.ended()) break;
        copyToWorld(frame, *world);
      }
      decoded_.push(std::move(*world));
    }
    decoded_.close();
  } catch (...) {
    decoded_.close(std::current_exception());
  }
}

}  // namespace cli
