// A queue between two or more threads that holds only a few items: the faster side waits.
// Waiting ends with Interrupted when the user asked to stop.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>

#include "cli/support/interrupt.h"

namespace cli {

template <typename T>
class BoundedQueue {
 public:
  explicit BoundedQueue(std::size_t capacity) : capacity_(capacity) {}

  // Waits for room. A closed queue takes nothing: throws the error it was closed with, if any.
  void push(T item) {
    std::unique_lock lock(mutex_);
    wait(lock, [this] { return closed_ || items_.size() < capacity_; });
    if (error_) std::rethrow_exception(error_);
    if (closed_) return;
    items_.push_back(std::move(item));
    changed_.notify_all();
  }

  // Waits for an item. After the last one of a closed queue: throws the error it was closed with,
  // otherwise returns nothing.
  std::optional<T> pop() {
    std::unique_lock lock(mutex_);
    wait(lock, [this] { return closed_ || !items_.empty(); });
    if (items_.empty()) {
      if (error_) std::rethrow_exception(error_);
      return std::nullopt;
    }
    std::optional<T> item(std::move(items_.front()));
    items_.pop_front();
    changed_.notify_all();
    return item;
  }

  // The first call counts.
  void close(std::exception_ptr error = nullptr) {
    const std::lock_guard lock(mutex_);
    if (closed_) return;
    closed_ = true;
    error_ = std::move(error);
    changed_.notify_all();
  }

 private:
  // A signal wakes no condition variable, so its flag is looked at now and then.
  template <typename Condition>
  void wait(std::unique_lock<std::mutex>& lock, Condition condition) {
    constexpr std::chrono::milliseconds kLookInterval(50);
    while (!changed_.wait_for(lock, kLookInterval, condition)) throwIfInterrupted();
  }

  const std::size_t capacity_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<T> items_;
  bool closed_ = false;
  std::exception_ptr error_;
};

}  // namespace cli
