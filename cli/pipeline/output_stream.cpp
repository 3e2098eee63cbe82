#include "cli/pipeline/output_stream.h"

#include <algorithm>
#include <utility>

#include "cli/support/processors.h"

namespace cli {
namespace {

// Each holds a few pictures in memory.
constexpr int kMostEncoders = 8;

int threadsFor(const FrameWriter& writer) {
  if (!writer.isSlowToEncode()) return 1;
  return std::min(usableProcessors(), kMostEncoders);
}

}  // namespace

OutputStream::OutputStream(std::unique_ptr<FrameWriter> writer, FrameSize size, Depth depth)
    : writer_(std::move(writer)),
      size_(size),
      depth_(depth),
      threads_(threadsFor(*writer_)),
      worlds_(threads_ + 1),  // one for each thread, and one that waits
      free_(static_cast<std::size_t>(worlds_)),
      rendered_(static_cast<std::size_t>(worlds_)) {
  for (int i = 0; i < worlds_; ++i) free_.push(hostkit::World(size.width, size.height, depth));
  startWorkers();
}

// One is enough, where more cannot be had.
void OutputStream::startWorkers() {
  try {
    for (int i = 0; i < threads_; ++i) workers_.push_back(startThread([this] { encode(); }));
  } catch (...) {
    if (workers_.empty()) throw;
    threads_ = static_cast<int>(workers_.size());
  }
}

OutputStream::~OutputStream() {
  writer_->abandon();
  stop();
}

void OutputStream::write(hostkit::World& picture, int number) {
  if (std::optional<hostkit::World> world = free_.pop()) {
    rendered_.push({std::exchange(picture, std::move(*world)), number, taken_++});
  }
}

void OutputStream::finish() {
  // When all worlds are back, all pictures are written.
  for (int i = 0; i < worlds_; ++i) free_.pop();
  stop();
  const BusyTime::Scope busy(encoding_);
  writer_->finish();
}

int OutputStream::framesWritten() const {
  const std::lock_guard lock(turnMutex_);
  return turn_;
}

void OutputStream::stop() {
  rendered_.close();
  workers_.clear();
}

void OutputStream::encode() {
  try {
    Frame frame(size_, depth_);
    std::vector<std::uint8_t> buffer;
    while (std::optional<Picture> picture = rendered_.pop()) {
      std::span<const std::uint8_t> encoded;
      {
        const BusyTime::Scope busy(encoding_);
        copyFromWorld(picture->world, frame);
        encoded = writer_->encode(frame, buffer);
      }
      if (!waitForTurn(picture->turn)) return;
      {
        const BusyTime::Scope busy(encoding_);
        writer_->write(encoded, picture->number);
      }
      turnDone();
      free_.push(std::move(picture->world));
    }
  } catch (...) {
    fail(std::current_exception());
  }
}

// False when an earlier frame failed.
bool OutputStream::waitForTurn(int turn) {
  std::unique_lock lock(turnMutex_);
  turnChanged_.wait(lock, [&] { return failed_ || turn_ == turn; });
  return !failed_;
}

void OutputStream::turnDone() {
  const std::lock_guard lock(turnMutex_);
  ++turn_;
  turnChanged_.notify_all();
}

void OutputStream::fail(const std::exception_ptr& error) {
  {
    const std::lock_guard lock(turnMutex_);
    failed_ = true;
    turnChanged_.notify_all();
  }
  rendered_.close(error);
  free_.close(error);
}

}  // namespace cli
