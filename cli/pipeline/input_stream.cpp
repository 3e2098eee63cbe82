#include "cli/pipeline/input_stream.h"

#include "cli/support/errors.h"

namespace cli {

InputStream::InputStream(const ScenePlan& plan, int firstFrame, int inUse)
    : reader_(*plan.input, plan.size, plan.rate, plan.depth, firstFrame),
      name_(plan.input->source.name),
      frames_(plan.input->isStill() ? 1 : framesAtRate(*plan.input, plan.rate)),
      toleratesDamage_(plan.reading.tolerateDamage),
      firstFrame_(firstFrame),
      taken_(reader_.firstFrame()) {
  const int count = plan.input->isStill() ? 2 : inUse + 1;  // one is being read
  for (int i = 0; i < count; ++i) pictures_.emplace_back(worldFor(plan));
}

InputPicture& InputStream::next() {
  do {
    if (!ended_) take();
  } while (taken_ <= firstFrame_ && !ended_);
  return pictures_[current_];
}

void InputStream::take() {
  const std::size_t following = (current_ + 1) % pictures_.size();
  try {
    if (reader_.read(pictures_[following])) {
      current_ = following;
      ++taken_;
    } else {
      ended_ = true;
    }
  } catch (const WorkError& error) {
    if (taken_ == reader_.firstFrame()) throw;
    if (!toleratesDamage_) {
      throw WorkError(std::string(error.what()) +
                      "; with --tolerate-damage the last frame before that holds");
    }
    ended_ = true;
    failure_ = error.what();
  }
}

std::string InputStream::damage() {
  try {
    while (taken_ >= frames_ && !ended_) take();
  } catch (const WorkError& error) {
    ended_ = true;
    failure_ = error.what();
  }
  if (!failure_.empty()) return failure_;
  const std::string complaint = reader_.complaint();
  if (complaint.empty()) return {};
  return "the input " + inQuotes(name_) + " is damaged: " + complaint;
}

}  // namespace cli
