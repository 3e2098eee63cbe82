#include "cli/pipeline/input_stream.h"

#include "cli/support/errors.h"

namespace cli {

InputStream::InputStream(const ScenePlan& plan, int inUse)
    : reader_(*plan.input, plan.size, plan.rate, plan.depth),
      name_(plan.input->source.name),
      frames_(plan.input->isStill() ? 1 : framesAtRate(*plan.input, plan.rate)),
      toleratesDamage_(plan.reading.tolerateDamage) {
  const int count = plan.input->isStill() ? 2 : inUse + 1;  // one is being read
  for (int i = 0; i < count; ++i) pictures_.emplace_back(worldFor(plan));
}

InputPicture& InputStream::next() {
  if (ended_) return pictures_[current_];
  const std::size_t following = (current_ + 1) % pictures_.size();
  try {
    if (reader_.read(pictures_[following])) {
      current_ = following;
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
  return pictures_[current_];
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

}  // namespace cli
