// Rendered frames on their way to a writer. Threads of its own encode them, several at a time where
// the writer allows; they are written one after another, in order.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "cli/media/frame_writer.h"
#include "cli/pipeline/bounded_queue.h"
#include "cli/pipeline/busy_time.h"
#include "hostkit/world.h"

namespace cli {

class OutputStream {
 public:
  // Takes frames of that size and depth. Throws when no thread can be started.
  OutputStream(std::unique_ptr<FrameWriter> writer, FrameSize size, Depth depth);

  // Without finish(): numbered pictures on their way are still written, a clip is given up.
  ~OutputStream();

  // Takes the picture, and leaves a used world in its place. The numbers ascend. Throws what went
  // wrong with an earlier frame.
  void write(hostkit::World& picture, int number);

  // Waits until every frame is written, and finishes the output. Throws likewise.
  void finish();

  // What the user should know although the output is complete; after finish().
  std::string warning() const { return writer_->warning(); }

  // So far.
  int framesWritten() const;

  int threads() const { return threads_; }
  // Seconds of work, waiting for the encoder included, divided by the number of threads.
  double encodingSeconds() const { return encoding_.seconds() / threads_; }

 private:
  struct Picture {
    hostkit::World world;
    int number;
    int turn;  // pictures taken before it
  };

  void startWorkers();
  void stop();
  void encode();
  bool waitForTurn(int turn);
  void turnDone();
  void fail(const std::exception_ptr& error);

  const std::unique_ptr<FrameWriter> writer_;
  const FrameSize size_;
  const Depth depth_;
  int threads_;
  const int worlds_;
  int taken_ = 0;
  BusyTime encoding_;
  BoundedQueue<hostkit::World> free_;
  BoundedQueue<Picture> rendered_;

  mutable std::mutex turnMutex_;
  std::condition_variable turnChanged_;
  int turn_ = 0;  // the picture to be written next
  bool failed_ = false;

  std::vector<std::jthread> workers_;
};

}  // namespace cli
