#include "render/worker_pool.h"

#include <new>
#include <system_error>
#include <utility>

#include "core/floating_point_guard.h"

namespace brisel {

WorkerPool::WorkerPool(int threads) {
  try {
    for (int thread = 1; thread < threads; ++thread) {
      threads_.emplace_back([this, thread] { serve(thread); });
    }
  } catch (const std::system_error&) {
  } catch (const std::bad_alloc&) {
  }
}

WorkerPool::~WorkerPool() {
  {
    const std::scoped_lock lock(mutex_);
    closing_ = true;
  }
  begun_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void WorkerPool::run(int parts, const Work& work) {
  if (threads_.empty() || parts <= 1) {
    for (int part = 0; part < parts; ++part) work(part, 0);
    return;
  }
  {
    const std::scoped_lock lock(mutex_);
    work_ = &work;
    parts_ = parts;
    next_ = 0;
    ++round_;
  }
  begun_.notify_all();
  workAs(0);
  std::unique_lock lock(mutex_);
  // A thread that has not woken up by now finds nothing to do, and is not waited for.
  ended_.wait(lock, [this] { return busy_ == 0; });
  work_ = nullptr;
  if (failure_ != nullptr) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void WorkerPool::serve(int thread) {
  const FloatingPointGuard floatingPoint;
  std::uint64_t served = 0;
  std::unique_lock lock(mutex_);
  for (;;) {
    begun_.wait(lock, [&] { return closing_ || round_ != served; });
    if (closing_) return;
    served = round_;
    if (work_ == nullptr) continue;
    ++busy_;
    lock.unlock();
    workAs(thread);
    lock.lock();
    if (--busy_ == 0) ended_.notify_one();
  }
}

void WorkerPool::workAs(int thread) {
  try {
    for (int part = next_++; part < parts_; part = next_++) (*work_)(part, thread);
  } catch (...) {
    next_ = parts_;
    const std::scoped_lock lock(mutex_);
    if (failure_ == nullptr) failure_ = std::current_exception();
  }
}

}  // namespace brisel
