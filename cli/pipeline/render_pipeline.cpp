#include "cli/pipeline/render_pipeline.h"

#include <tbb/global_control.h>
#include <tbb/parallel_pipeline.h>
#include <tbb/task_arena.h>

#include <atomic>
#include <deque>
#include <exception>
#include <mutex>
#include <utility>

#include "cli/support/processors.h"

namespace cli {
namespace {

// A frame on its way.
struct Passing {
  explicit Passing(hostkit::World world) : output(std::move(world)) {}

  std::mutex order;
  int number = 0;
  bool isWanted = false;
  InputPicture* input = nullptr;
  bool isNewInput = false;  // not that of the frame before
  hostkit::World output;
  EncodedFrame encoded;
  bool failed = false;
};

class Pipeline {
 public:
  Pipeline(SceneRenderer& renderer, FrameWriter& writer, const std::vector<int>& wanted,
           Progress& progress, StageTimes& times)
      : renderer_(renderer),
        writer_(writer),
        progress_(progress),
        times_(times),
        next_(renderer.firstFrame()),
        nextWanted_(wanted.begin()),
        wantedEnd_(wanted.end()) {
    for (int i = 0; i < renderer.framesAtOnce(); ++i) passing_.emplace_back(renderer.newOutput());
  }

  // See the locks below.
  ~Pipeline() {
    const std::scoped_lock order(readingOrder_, paintingOrder_, writingOrder_);
    for (Passing& frame : passing_) const std::lock_guard frameOrder(frame.order);
  }

  void run();

 private:
  Passing* read(tbb::flow_control& flow);
  void convert(Passing& frame);
  void paint(Passing& frame);
  void encode(Passing& frame);
  void write(Passing& frame);

  SceneRenderer& renderer_;
  FrameWriter& writer_;
  Progress& progress_;
  StageTimes& times_;
  int next_;  // frame to be read
  std::vector<int>::const_iterator nextWanted_;
  const std::vector<int>::const_iterator wantedEnd_;
  const InputPicture* lastInput_ = nullptr;
  std::deque<Passing> passing_;  // taken in turns: the oldest is the first that leaves
  std::size_t turn_ = 0;
  std::exception_ptr readingFailure_;
  std::exception_ptr paintingFailure_;
  std::atomic<bool> hasFailed_ = false;

  // The library orders the stages of a frame, the frames of a stage that takes one at a time, and
  // the end of all. These locks, which are always free, show that to a thread sanitizer, which
  // cannot look into it.
  std::mutex readingOrder_;
  std::mutex paintingOrder_;
  std::mutex writingOrder_;
};

void Pipeline::run() {
  using tbb::filter_mode;
  const auto stage = [this](filter_mode mode, void (Pipeline::*work)(Passing&)) {
    return tbb::make_filter<Passing*, Passing*>(mode, [this, work](Passing* frame) {
      (this->*work)(*frame);
      return frame;
    });
  };
  tbb::parallel_pipeline(
      passing_.size(),
      tbb::make_filter<void, Passing*>(filter_mode::serial_in_order,
                                       [this](tbb::flow_control& flow) { return read(flow); }) &
          stage(filter_mode::parallel, &Pipeline::convert) &
          stage(filter_mode::serial_in_order, &Pipeline::paint) &
          stage(filter_mode::parallel, &Pipeline::encode) &
          tbb::make_filter<Passing*, void>(filter_mode::serial_in_order,
                                           [this](Passing* frame) { write(*frame); }));
  const std::scoped_lock order(readingOrder_, paintingOrder_);
  if (paintingFailure_) std::rethrow_exception(paintingFailure_);
  if (readingFailure_) std::rethrow_exception(readingFailure_);
}

Passing* Pipeline::read(tbb::flow_control& flow) {
  const std::lock_guard order(readingOrder_);
  if (nextWanted_ == wantedEnd_ || hasFailed_) {
    flow.stop();
    return nullptr;
  }
  Passing& frame = passing_[turn_++ % passing_.size()];
  const std::lock_guard frameOrder(frame.order);
  try {
    const BusyTime::Scope busy(times_.reading);
    frame.input = &renderer_.readNext();
  } catch (...) {
    readingFailure_ = std::current_exception();
    flow.stop();
    return nullptr;
  }
  frame.isNewInput = frame.input != std::exchange(lastInput_, frame.input);
  frame.number = next_++;
  frame.isWanted = frame.number == *nextWanted_;
  if (frame.isWanted) ++nextWanted_;
  return &frame;
}

void Pipeline::convert(Passing& frame) {
  const std::lock_guard order(frame.order);
  if (!frame.isNewInput) return;
  const BusyTime::Scope busy(times_.converting);
  frame.input->convert();
}

void Pipeline::paint(Passing& frame) {
  const std::scoped_lock order(paintingOrder_, frame.order);
  frame.failed = hasFailed_;
  if (frame.failed) return;
  try {
    if (frame.isWanted) {
      const BusyTime::Scope busy(times_.painting);
      renderer_.renderNext(*frame.input, frame.output);
    } else {
      const BusyTime::Scope busy(times_.stepping);
      renderer_.stepNext(*frame.input);
    }
  } catch (...) {
    paintingFailure_ = std::current_exception();
    hasFailed_ = frame.failed = true;
  }
}

void Pipeline::encode(Passing& frame) {
  const std::lock_guard order(frame.order);
  if (!frame.isWanted || frame.failed) return;
  const BusyTime::Scope busy(times_.encoding);
  writer_.encode(frame.output, frame.encoded);
}

void Pipeline::write(Passing& frame) {
  const std::scoped_lock order(writingOrder_, frame.order);
  if (frame.failed) return;
  if (!frame.isWanted) return progress_.stepDone();
  const BusyTime::Scope busy(times_.writing);
  try {
    writer_.write(frame.encoded.bytes, frame.number);
  } catch (...) {
    renderer_.stopReading();  // which may be waiting
    throw;
  }
  progress_.frameDone();
}

}  // namespace

void renderFrames(SceneRenderer& renderer, FrameWriter& writer, const std::vector<int>& wanted,
                  Progress& progress, StageTimes& times) {
  // The library ends the program when a thread cannot be had, so nobody must take them afterwards.
  renderer.startThreads();
  const int jobs = 1 + threadsToBeHad(renderer.jobs() - 1);
  const tbb::global_control limit(tbb::global_control::max_allowed_parallelism,
                                  static_cast<std::size_t>(jobs));
  tbb::task_arena arena(jobs);
  arena.execute([&] { Pipeline(renderer, writer, wanted, progress, times).run(); });
  const BusyTime::Scope busy(times.writing);
  writer.finish();
}

}  // namespace cli
