// Threads that share out the parts of a piece of work.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace brisel {

/// The caller's thread and others, which live as long as the pool and sleep while there is nothing
/// to do. Used by one thread at a time.
class WorkerPool {
 public:
  /// Of `threads` in all, the caller's among them; those that the system does not give are done
  /// without. One thread starts none.
  explicit WorkerPool(int threads);
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;
  ~WorkerPool();

  int threadCount() const { return static_cast<int>(threads_.size()) + 1; }

  /// Part of a whole, and the thread that does it: 0, the caller's, to threadCount() - 1.
  using Work = std::function<void(int part, int thread)>;

  /// Does parts 0 to `parts` - 1, each once, as threads come free, and returns when all are done.
  /// The pool's own threads work in the default floating-point environment. Parts that nobody has
  /// begun are left out after an exception, of which the first reaches the caller.
  void run(int parts, const Work& work);

 private:
  void serve(int thread);
  void workAs(int thread);

  std::mutex mutex_;
  std::condition_variable begun_;
  std::condition_variable ended_;
  std::uint64_t round_ = 0;  // how often work has begun
  int busy_ = 0;             // threads of the pool that are at it
  bool closing_ = false;

  // Of the current round
  const Work* work_ = nullptr;  // null between rounds
  std::exception_ptr failure_;
  int parts_ = 0;
  std::atomic<int> next_ = 0;

  std::vector<std::thread> threads_;
};

}  // namespace brisel
