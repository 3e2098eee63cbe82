#include "cli/pipeline/input_stream.h"

#include <utility>

#include "cli/support/errors.h"
#include "cli/support/processors.h"

namespace cli {
namespace {

// One is being filled, one waits; the renderer has a third.
constexpr int kWorldsAhead = 2;

}  // namespace

InputStream::InputStream(const ScenePlan& plan)
    : reader_(*plan.input, plan.size, plan.rate, plan.depth),
      current_(worldFor(plan)),
      name_(plan.input->source.name),
      frames_(plan.input->isStill() ? 1 : framesAtRate(*plan.input, plan.rate)),
      toleratesDamage_(plan.reading.tolerateDamage),
      free_(kWorldsAhead + 1),
      decoded_(kWorldsAhead) {
  for (int i = 0; i < kWorldsAhead; ++i) free_.push(worldFor(plan));
  thread_ = startThread([this] { decode(); });
}

InputStream::~InputStream() {
  reader_.stop();
  free_.close();
  decoded_.close();
}

hostkit::World& InputStream::next() {
  if (ended_) return current_;
  try {
    if (std::optional<hostkit::World> world = decoded_.pop()) {
      free_.push(std::exchange(current_, std::move(*world)));
      ++taken_;
    } else {
      ended_ = true;
    }
  } catch (const WorkError& error) {
    if (taken_ == 0) throw;
    if (!toleratesDamage_) {
      throw WorkError(std::string(error.what()) +
                      "; with --tolerate-damage the last frame before that holds");
    }
    ended_ = true;
    failure_ = error.what();
  }
  return current_;
}

std::string InputStream::damage() {
  try {
    while (taken_ >= frames_ && !ended_) next();
  } catch (const WorkError& error) {
    ended_ = true;
    failure_ = error.what();
  }
  if (!failure_.empty()) return failure_;
  const std::string complaint = reader_.complaint();
  if (complaint.empty()) return {};
  return "the input " + inQuotes(name_) + " is damaged: " + complaint;
}

void InputStream::decode() {
  try {
    while (std::optional<hostkit::World> world = free_.pop()) {
      {
        const BusyTime::Scope busy(decoding_);
        if (!reader_.next(*world)) break;
      }
      decoded_.push(std::move(*world));
    }
    decoded_.close();
  } catch (...) {
    decoded_.close(std::current_exception());
  }
}

}  // namespace cli
